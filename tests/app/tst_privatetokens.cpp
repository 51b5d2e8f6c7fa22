// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "app/privatetokens.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

namespace {

void write(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size());
}

} // namespace

/// Where SoftHSM looks for its tokens when the program starts: in a folder of the user's own,
/// unless it is set up already. Without a window, because a process with threads keeps its
/// environment.
class TestPrivateTokens : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { qputenv("TRIVEX_PKCS11_MODULES", "/anywhere/libsofthsm2.so"); }
    void leavesOthersAlone_data();
    void leavesOthersAlone();
    void keepsWhatIsThere();
    void marksThatEndAPath();
};

void TestPrivateTokens::leavesOthersAlone_data()
{
    QTest::addColumn<QByteArray>("variable");
    QTest::addColumn<bool>("ownFile");
    QTest::addColumn<bool>("systemTokens");
    QTest::addColumn<bool>("isPrivate");
    QTest::newRow("nothing chosen") << QByteArray() << false << false << true;
    QTest::newRow("variable") << QByteArray("/elsewhere") << false << false << false;
    QTest::newRow("own configuration") << QByteArray() << true << false << false;
    QTest::newRow("tokens of the system") << QByteArray() << false << true << false;
}

void TestPrivateTokens::leavesOthersAlone()
{
    QFETCH(QByteArray, variable);
    QFETCH(bool, ownFile);
    QFETCH(bool, systemTokens);
    QFETCH(bool, isPrivate);
    const QTemporaryDir other;
    qputenv("HOME", QFile::encodeName(other.path()));
    qputenv("XDG_DATA_HOME", QFile::encodeName(other.filePath(QStringLiteral("data"))));
    qunsetenv("SOFTHSM2_CONF");
    if (!variable.isEmpty())
        qputenv("SOFTHSM2_CONF", variable);
    if (ownFile) {
        QDir(other.path()).mkpath(QStringLiteral(".config/softhsm2"));
        write(other.filePath(QStringLiteral(".config/softhsm2/softhsm2.conf")), "# mine\n");
    }
    const QString system = other.filePath(QStringLiteral("system.conf"));
    QDir(other.path())
        .mkpath(systemTokens ? QStringLiteral("tokens/one") : QStringLiteral("tokens"));
    write(system,
          "# SoftHSM\ndirectories.tokendir = "
              + QFile::encodeName(other.filePath(QStringLiteral("tokens"))) + '\n');
    Trivex::usePrivateTokens({system});
    const QByteArray chosen = qgetenv("SOFTHSM2_CONF");
    const QString own = other.filePath(QStringLiteral("data/trivex/softhsm/softhsm2.conf"));
    QCOMPARE(QFile::decodeName(chosen), isPrivate ? own : QFile::decodeName(variable));
    QCOMPARE(QFile::exists(own), isPrivate);
}

void TestPrivateTokens::keepsWhatIsThere()
{
    const QTemporaryDir home;
    qputenv("HOME", QFile::encodeName(home.path()));
    qputenv("XDG_DATA_HOME", QFile::encodeName(home.filePath(QStringLiteral("data"))));
    qunsetenv("SOFTHSM2_CONF");
    const QString folder = home.filePath(QStringLiteral("data/trivex/softhsm"));
    QVERIFY(QDir().mkpath(folder + QStringLiteral("/tokens/one")));
    write(folder + QStringLiteral("/softhsm2.conf"), "# somebody's\n");
    QVERIFY(QDir().mkpath(home.filePath(QStringLiteral("others/one"))));
    const QString system = home.filePath(QStringLiteral("system.conf"));
    write(system,
          "directories.tokendir=" + QFile::encodeName(home.filePath(QStringLiteral("others"))));
    // Who has private tokens gets them, whatever the system has.
    Trivex::usePrivateTokens({system});
    QCOMPARE(QFile::decodeName(qgetenv("SOFTHSM2_CONF")),
             folder + QStringLiteral("/softhsm2.conf"));
    QFile file(folder + QStringLiteral("/softhsm2.conf"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("# somebody's\n"));
}

void TestPrivateTokens::marksThatEndAPath()
{
    const QTemporaryDir home;
    qputenv("HOME", QFile::encodeName(home.path()));
    qputenv("XDG_DATA_HOME", QFile::encodeName(home.filePath(QStringLiteral("da#ta"))));
    qunsetenv("SOFTHSM2_CONF");
    Trivex::usePrivateTokens({});
    QVERIFY(!qEnvironmentVariableIsSet("SOFTHSM2_CONF"));
}

QTEST_GUILESS_MAIN(TestPrivateTokens)
#include "tst_privatetokens.moc"
