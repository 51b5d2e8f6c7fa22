// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Answers that depend neither on the user's settings nor on how a file is named.
#include "tests/console/outcome.h"
#include "tests/support/testcertificates.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QUrl>
#include <QtTest>

using namespace TrivexTest;

namespace {

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

/// Sets a variable of the environment, as long as it lives.
class Setting {
public:
    Setting(const char *name, const char *value)
        : m_name(name)
        , m_before(qgetenv(name))
    {
        qputenv(name, value);
    }
    ~Setting()
    {
        if (m_before.isEmpty())
            qunsetenv(m_name);
        else
            qputenv(m_name, m_before);
    }
    Q_DISABLE_COPY(Setting)

private:
    const char *m_name;
    QByteArray m_before;
};

} // namespace

class TestAnswers : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void answersProgramsInEnglish_data();
    void answersProgramsInEnglish();
    void listsStoresInOneOrder();
    void writesTimesForPrograms();
    void takesUrls_data();
    void takesUrls();
    void takesUrlsOfOptions();
    void prefersFilesThatLookLikeUrls();

private:
    QString path(const QString &name) const { return m_files.filePath(name); }
    QString url(const QString &name) const
    {
        return QUrl::fromLocalFile(path(name)).toString(QUrl::FullyEncoded);
    }

    QTemporaryDir m_files;
    std::unique_ptr<TestAuthority> m_authority;
};

void TestAnswers::initTestCase()
{
    qputenv("HOME", QFile::encodeName(m_files.path()));
    qputenv("XDG_DATA_HOME", QFile::encodeName(path(QStringLiteral("share"))));
    qputenv("TRIVEX_PKCS11_MODULES", "/nonexistent.so");
    m_authority = std::make_unique<TestAuthority>();
    QVERIFY(m_authority->isValid());
    QFile authority(m_authority->certificateFile());
    QVERIFY(authority.open(QIODevice::ReadOnly));
    QVERIFY(write(path(QStringLiteral("one root")), authority.readAll()));
    QVERIFY(write(path(QStringLiteral("letter")), "Dear all"));
    for (const bool isAttached : {false, true}) {
        QStringList signing = {QStringLiteral("cms"),
                               QStringLiteral("-sign"),
                               QStringLiteral("-binary"),
                               QStringLiteral("-in"),
                               path(QStringLiteral("letter")),
                               QStringLiteral("-signer"),
                               m_authority->certificateFile(),
                               QStringLiteral("-inkey"),
                               m_authority->file(QStringLiteral("ca.key")),
                               QStringLiteral("-outform"),
                               QStringLiteral("DER")};
        if (isAttached)
            signing += QStringLiteral("-nodetach");
        QVERIFY(write(path(QLatin1String(isAttached ? "letter.p7m" : "letter.p7s")),
                      m_authority->openssl(signing)));
    }
    QFile bundle(m_authority->bundle({QStringLiteral("-algorithm"), QStringLiteral("RSA")},
                                     QStringLiteral("/CN=Bundled"), QStringLiteral("secret"),
                                     QStringLiteral("friend")));
    QVERIFY(bundle.open(QIODevice::ReadOnly));
    QVERIFY(write(path(QStringLiteral("bundle")), bundle.readAll()));
    QVERIFY(write(path(QStringLiteral("right")), "secret\n"));
}

void TestAnswers::answersProgramsInEnglish_data()
{
    QTest::addColumn<QStringList>("arguments");
    const QString show = QStringLiteral("--show");
    const QString verify = QStringLiteral("--verify");
    QTest::newRow("certificate") << QStringList{show, path(QStringLiteral("one root"))};
    QTest::newRow("bundle") << QStringList{show, path(QStringLiteral("bundle")),
                                           QStringLiteral("--password-file"),
                                           path(QStringLiteral("right"))};
    QTest::newRow("bundle, wrong password")
        << QStringList{show, path(QStringLiteral("bundle")), QStringLiteral("--password-file"),
                       path(QStringLiteral("letter"))};
    QTest::newRow("document") << QStringList{show, path(QStringLiteral("letter"))};
    QTest::newRow("folder") << QStringList{show, m_files.path()};
    QTest::newRow("no file") << QStringList{show, path(QStringLiteral("missing"))};
    QTest::newRow("signature") << QStringList{verify, path(QStringLiteral("letter.p7s"))};
    QTest::newRow("message") << QStringList{verify, path(QStringLiteral("letter.p7m"))};
    QTest::newRow("no signature") << QStringList{verify, path(QStringLiteral("one root"))};
    QTest::newRow("no key") << QStringList{QStringLiteral("--sign"), path(QStringLiteral("right")),
                                           QStringLiteral("--key"), QStringLiteral("nobody")};
    QTest::newRow("list") << QStringList{QStringLiteral("--list")};
    QTest::newRow("wrong use") << QStringList{show};
    QTest::newRow("unknown option") << QStringList{show, QStringLiteral("--bogus")};
}

// A program that reads the answer knows nothing of who started it.
void TestAnswers::answersProgramsInEnglish()
{
    QFETCH(QStringList, arguments);
    arguments += QStringLiteral("--json");
    Outcome english;
    {
        const Setting language("LANGUAGE", "en");
        const Setting zone("TZ", "UTC");
        english = run(arguments, QStringLiteral("C.UTF-8"));
    }
    const Setting language("LANGUAGE", "ru");
    const Setting zone("TZ", "Asia/Vladivostok");
    const Outcome russian = run(arguments, QStringLiteral("ru_RU.UTF-8"));
    QCOMPARE(russian.said, english.said);
    QCOMPARE(russian.complained, english.complained);
    QCOMPARE(russian.code, english.code);
    QVERIFY(!english.said.isEmpty() || !english.complained.isEmpty());
}

// Which provider tells of its store first differs from start to start.
void TestAnswers::listsStoresInOneOrder()
{
    constexpr int Starts = 8;
    for (int start = 0; start < Starts; ++start) {
        QStringList userStores;
        const QJsonArray stores = run({QStringLiteral("--list"), QStringLiteral("--json")}).json();
        for (const QJsonValue &store : stores) {
            if (store[QLatin1String("kind")] == QLatin1String("user"))
                userStores += store[QLatin1String("store")].toString();
        }
        QCOMPARE(userStores,
                 (QStringList{QStringLiteral("USER"), QStringLiteral("User Software Store")}));
    }
}

void TestAnswers::writesTimesForPrograms()
{
    const QString file = path(QStringLiteral("one root"));
    const Outcome shown =
        run({QStringLiteral("--show"), QStringLiteral("--json"), file}, QStringLiteral("en_US"));
    const QByteArray dates = m_authority->openssl(
        {QStringLiteral("x509"), QStringLiteral("-in"), file, QStringLiteral("-noout"),
         QStringLiteral("-enddate"), QStringLiteral("-dateopt"), QStringLiteral("iso_8601")});
    // "notAfter=2027-01-31 12:00:00Z"
    const QByteArray end = dates.trimmed().mid(int(qstrlen("notAfter="))).replace(' ', 'T');
    QVERIFY2(end.endsWith('Z') && shown.said.contains('"' + end + '"'),
             QByteArray(end + shown.said).constData());
}

void TestAnswers::takesUrls_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("name");
    QTest::newRow("show") << QStringLiteral("--show") << QStringLiteral("one root");
    QTest::newRow("verify, beside") << QStringLiteral("--verify") << QStringLiteral("letter");
    QTest::newRow("verify, message") << QStringLiteral("--verify") << QStringLiteral("letter.p7m");
    QTest::newRow("missing") << QStringLiteral("--show") << QStringLiteral("missing");
}

void TestAnswers::takesUrls()
{
    QFETCH(QString, option);
    QFETCH(QString, name);
    const Outcome byPath = run({option, QStringLiteral("--json"), path(name)});
    const Outcome byUrl = run({option, QStringLiteral("--json"), url(name)});
    QCOMPARE(byUrl.said, byPath.said);
    QCOMPARE(byUrl.complained, byPath.complained);
    QCOMPARE(byUrl.code, byPath.code);
    QVERIFY(byPath.said.contains('{'));
}

void TestAnswers::takesUrlsOfOptions()
{
    const Outcome opened = run({QStringLiteral("--show"), url(QStringLiteral("bundle")),
                                QStringLiteral("--password-file"), url(QStringLiteral("right"))});
    QCOMPARE(opened.complained, QByteArray());
    QVERIFY2(opened.said.contains("Bundled"), opened.said.constData());
    const Outcome verified = run({QStringLiteral("--verify"), url(QStringLiteral("letter.p7s")),
                                  QStringLiteral("--document"), url(QStringLiteral("letter")),
                                  QStringLiteral("--json")});
    QVERIFY2(verified.said.contains("\"good\""), verified.said.constData());
    // The signature would replace what lies there.
    const Outcome refused =
        run({QStringLiteral("--sign"), url(QStringLiteral("letter")), QStringLiteral("--key"),
             QStringLiteral("nobody"), QStringLiteral("--output"), url(QStringLiteral("right"))});
    QVERIFY2(
        refused.complained.contains(QFile::encodeName(path(QStringLiteral("right"))) + " exists"),
        refused.complained.constData());
}

void TestAnswers::prefersFilesThatLookLikeUrls()
{
    const QString here = QDir::currentPath();
    const auto back = qScopeGuard([&] { QDir::setCurrent(here); });
    QVERIFY(QDir::setCurrent(m_files.path()));
    const QString odd = QStringLiteral("file:one%20root");
    const Outcome byUrl = run({QStringLiteral("--show"), odd});
    QVERIFY2(byUrl.said.startsWith("Test Root\n"), byUrl.complained.constData());
    QVERIFY(write(odd, "Dear all"));
    const Outcome byName = run({QStringLiteral("--show"), odd});
    QCOMPARE(byName.said, QByteArray());
    QVERIFY2(byName.complained.startsWith("trivex: file:one%20root: "),
             byName.complained.constData());
}

QTEST_GUILESS_MAIN(TestAnswers)

#include "tst_answers.moc"
