// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/support/testcertificates.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using namespace TrivexTest;

/// The program where its standard streams are full or closed.
class TestStreams : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void tellsThatNothingWasWritten_data();
    void tellsThatNothingWasWritten();
    void endsWellWithoutOtherStreams_data();
    void endsWellWithoutOtherStreams();
    void writesIntoNothingElse_data();
    void writesIntoNothingElse();

private:
    QString path(const QString &name) const { return m_files.filePath(name); }
    bool start(const QString &redirection, const QStringList &arguments);

    QTemporaryDir m_files;
    QProcess m_process;
};

void TestStreams::initTestCase()
{
    qputenv("HOME", QFile::encodeName(m_files.path()));
    qputenv("TRIVEX_PKCS11_MODULES", "/nonexistent.so");
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY"})
        qunsetenv(name);
    qputenv("QT_QPA_PLATFORM", "none");
    TestAuthority authority;
    QVERIFY(authority.isValid());
    QFile file(path(QStringLiteral("one")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write(authority.certificate()) > 0);
}

/// Runs the program to its end with what a shell would do to its streams.
bool TestStreams::start(const QString &redirection, const QStringList &arguments)
{
    m_process.start(QStringLiteral("setsid"),
                    QStringList{QStringLiteral("-w"), QStringLiteral("sh"), QStringLiteral("-c"),
                                QStringLiteral("exec \"$@\" ") + redirection, QStringLiteral("sh"),
                                QStringLiteral(TRIVEX_PROGRAM)}
                        + arguments);
    return m_process.waitForFinished(60000) && m_process.exitStatus() == QProcess::NormalExit;
}

void TestStreams::tellsThatNothingWasWritten_data()
{
    QTest::addColumn<QString>("redirection");
    QTest::addColumn<QStringList>("arguments");
    const QStringList show{QStringLiteral("--show"), path(QStringLiteral("one"))};
    const QStringList list{QStringLiteral("--list")};
    const QStringList json{QStringLiteral("--json")};
    for (const char *redirection : {">/dev/full", ">&-"}) {
        const QString to = QString::fromLatin1(redirection);
        QTest::addRow("show %s", redirection) << to << show;
        QTest::addRow("show for programs %s", redirection) << to << show + json;
        QTest::addRow("list for programs %s", redirection) << to << list + json;
        for (const char *question : {"--help", "--help-all", "--version"})
            QTest::addRow("%s %s", question, redirection)
                << to << QStringList{QLatin1String(question)};
    }
}

void TestStreams::tellsThatNothingWasWritten()
{
    QFETCH(QString, redirection);
    QFETCH(QStringList, arguments);
    if (redirection.contains(QLatin1String("full")) && !QFile::exists(QStringLiteral("/dev/full")))
        QSKIP("SKIP there is no /dev/full");
    QVERIFY(start(redirection, arguments));
    const QByteArray complained = m_process.readAllStandardError();
    QCOMPARE(m_process.exitCode(), 1);
    QVERIFY2(complained.startsWith("trivex: The answer could not be written: "),
             complained.constData());
}

void TestStreams::endsWellWithoutOtherStreams_data()
{
    QTest::addColumn<QString>("redirection");
    QTest::newRow("no input") << QStringLiteral("<&-");
    QTest::newRow("no complaints") << QStringLiteral("2>&-");
    QTest::newRow("neither") << QStringLiteral("<&- 2>&-");
}

void TestStreams::endsWellWithoutOtherStreams()
{
    QFETCH(QString, redirection);
    QVERIFY(start(redirection, {QStringLiteral("--show"), path(QStringLiteral("one"))}));
    QCOMPARE(m_process.exitCode(), 0);
    QVERIFY(m_process.readAllStandardOutput().contains('\n'));
}

void TestStreams::writesIntoNothingElse_data()
{
    QTest::addColumn<QString>("redirection");
    QTest::addColumn<int>("stream");
    QTest::newRow("input") << QStringLiteral("<&-") << 0;
    QTest::newRow("output") << QStringLiteral(">&-") << 1;
    QTest::newRow("complaints") << QStringLiteral("2>&-") << 2;
}

void TestStreams::writesIntoNothingElse()
{
    QFETCH(QString, redirection);
    QFETCH(int, stream);
    const QString socket = path(QStringLiteral("trivex.socket"));
    QFile::remove(socket);
    QProcess window;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("QT_QUICK_BACKEND"), QStringLiteral("software"));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_files.path());
    window.setProcessEnvironment(environment);
    window.start(QStringLiteral("sh"),
                 {QStringLiteral("-c"), QStringLiteral("exec \"$@\" ") + redirection,
                  QStringLiteral("sh"), QStringLiteral(TRIVEX_PROGRAM)});
    const auto end = qScopeGuard([&] {
        window.kill();
        window.waitForFinished();
    });
    QVERIFY(window.waitForStarted());
    // Then all that a program opens at its start is open.
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(socket), 60000);
    const QString number = QStringLiteral("/proc/%1/fd/%2").arg(window.processId()).arg(stream);
    QCOMPARE(QFile::symLinkTarget(number), QStringLiteral("/dev/null"));
}

QTEST_GUILESS_MAIN(TestStreams)

#include "tst_streams.moc"
