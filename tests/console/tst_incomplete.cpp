// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Answers where a module or a token gives none.
#include "tests/console/outcome.h"
#include "tests/pkcs11/faultytoken.h"
#include "tests/support/needtokens.h"
#include "tests/support/testcertificates.h"

#include <QCryptographicHash>
#include <QFile>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

using namespace TrivexTest;

namespace {

/// Before the module has listed its tokens.
const QByteArray Silent = QByteArrayLiteral("hold C_Initialize *\n");

QString hash(const QByteArray &der)
{
    return QString::fromLatin1(QCryptographicHash::hash(der, QCryptographicHash::Sha256).toHex());
}

} // namespace

class TestIncomplete : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void waitsForTheModule();
    void namesTheSilentModule();
    void listsTheOthers();
    void signsByNoUnsureName_data();
    void signsByNoUnsureName();
    void tellsUnreadTokens_data();
    void tellsUnreadTokens();
    void tellsHalfReadTokens();
    void tellsCertificatesLeftOut();
    void signsByNoNameBesideAnUnreadToken();

private:
    QString path(const QString &name) const { return m_files.filePath(name); }
    QStringList signing(const QString &key) const;
    /// Two modules: the faulty one, and SoftHSM's own.
    void addPlainModule();
    Outcome run(const char *tokens, const QStringList &arguments) const
    {
        return TrivexTest::run(QStringList{QLatin1String(tokens)} + arguments);
    }
    QJsonObject tokenIn(const Outcome &outcome) const;

    QTemporaryDir m_files;
    std::unique_ptr<FaultyToken> m_token;
    QByteArray m_certificate;
};

void TestIncomplete::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    qputenv("HOME", QFile::encodeName(m_files.path()));
    qputenv("XDG_DATA_HOME", QFile::encodeName(path(QStringLiteral("share"))));
    m_token = std::make_unique<FaultyToken>(QStringLiteral("Sick"));
    QVERIFY2(m_token->problem().isEmpty(), qPrintable(m_token->problem()));
    const TestAuthority authority;
    const QString id = QStringLiteral("01");
    QVERIFY(m_token->token().generateKeyPair(QStringLiteral("EC:secp256r1"), id, id));
    m_certificate = authority.issue(m_token->token().publicKey(id), QStringLiteral("/CN=Anna"));
    QVERIFY(m_token->token().writeObject(QStringLiteral("cert"), m_certificate, id, id));
    for (const auto &[name, bytes] :
         {std::pair("letter", QByteArray("Pay 100\n")), std::pair("pin", TestToken::pin())}) {
        QFile file(path(QLatin1String(name)));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
}

void TestIncomplete::init()
{
    m_token->useInThisProcess();
    m_token->control();
    QFile::remove(path(QStringLiteral("letter.p7s")));
}

QStringList TestIncomplete::signing(const QString &key) const
{
    return {QStringLiteral("--sign"),     path(QStringLiteral("letter")),
            QStringLiteral("--key"),      key,
            QStringLiteral("--pin-file"), path(QStringLiteral("pin"))};
}

void TestIncomplete::addPlainModule()
{
    qputenv("TRIVEX_PKCS11_MODULES",
            qgetenv("TRIVEX_PKCS11_MODULES") + ';'
                + QFile::encodeName(TestToken::softHsmLibrary()));
}

QJsonObject TestIncomplete::tokenIn(const Outcome &outcome) const
{
    const QJsonObject first = outcome.json().at(0).toObject();
    return first.value(QStringLiteral("kind")).toString() == QLatin1String("token") ? first
                                                                                    : QJsonObject();
}

// QCA gives it up after some seconds.
void TestIncomplete::waitsForTheModule()
{
    m_token->control(Silent);
    QProcess process;
    start(process, {QStringLiteral("-"), QStringLiteral("--list")});
    QByteArray complained;
    const auto isHeldUp = [&] {
        complained += process.readAllStandardError();
        const bool isTold = complained.contains("Reading the tokens");
        return (isTold && complained.contains("QCA waits no longer"))
            || process.state() == QProcess::NotRunning;
    };
    QVERIFY(QTest::qWaitFor(isHeldUp, 60000));
    m_token->control();
    const Outcome outcome = finish(process);
    QVERIFY2(outcome.said.contains("  Anna, "), outcome.said.constData());
    QCOMPARE(outcome.code, 0);
    QVERIFY2(complained.contains("Reading the tokens"), complained.constData());
    QVERIFY2(complained.contains("QCA waits no longer"), complained.constData());
}

// The call still hangs when the process ends.
void TestIncomplete::namesTheSilentModule()
{
    m_token->control(Silent);
    const Outcome outcome = run("0", {QStringLiteral("--list")});
    QCOMPARE(outcome.code, 1);
    QVERIFY2(outcome.complained.contains("The module " + qgetenv("TRIVEX_PKCS11_MODULES")
                                         + " has not answered within a minute"),
             outcome.complained.constData());
    QVERIFY(!outcome.said.contains("Anna"));
}

void TestIncomplete::listsTheOthers()
{
    addPlainModule();
    m_token->control(Silent);
    const Outcome outcome = run("1", {QStringLiteral("--list"), QStringLiteral("--json")});
    QCOMPARE(outcome.code, 1);
    QCOMPARE(tokenIn(outcome).value(QStringLiteral("certificates")).toArray().size(), 1);
    QVERIFY2(outcome.complained.contains("has not answered"), outcome.complained.constData());
}

void TestIncomplete::signsByNoUnsureName_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("isSigned");
    QTest::newRow("name") << QStringLiteral("Anna") << false;
    QTest::newRow("fingerprint") << hash(m_certificate) << true;
}

// Another key of that name may be on a token of the module.
void TestIncomplete::signsByNoUnsureName()
{
    QFETCH(QString, key);
    addPlainModule();
    m_token->control(Silent);
    const Outcome outcome = run("1", signing(key));
    QVERIFY2(outcome.complained.contains("has not answered"), outcome.complained.constData());
    QVERIFY2(outcome.complained.contains(hash(m_certificate).toLatin1()) == (key.size() < 64),
             outcome.complained.constData());
    QTEST(outcome.code == 0, "isSigned");
    QTEST(QFile::exists(path(QStringLiteral("letter.p7s"))), "isSigned");
}

void TestIncomplete::tellsUnreadTokens_data()
{
    QTest::addColumn<QByteArray>("orders");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("objects") << QByteArray("fail C_FindObjects * CKR_DEVICE_ERROR")
                             << QByteArray("reported a fault. (C_FindObjects: CKR_DEVICE_ERROR)");
    QTest::newRow("session") << QByteArray("fail C_OpenSession * CKR_SESSION_COUNT")
                             << QByteArray("(C_OpenSession: CKR_SESSION_COUNT)");
    QTest::newRow("attributes") << QByteArray("fail C_GetAttributeValue * CKR_DEVICE_MEMORY")
                                << QByteArray("(C_GetAttributeValue: CKR_DEVICE_MEMORY)");
}

void TestIncomplete::tellsUnreadTokens()
{
    QFETCH(QByteArray, orders);
    QFETCH(QByteArray, reason);
    m_token->control(orders);
    const Outcome text = run("-", {QStringLiteral("--list")});
    QVERIFY2(text.complained.contains("The token Sick could not be read: "),
             text.complained.constData());
    QVERIFY2(text.complained.contains(reason), text.complained.constData());
    QVERIFY2(text.said.startsWith("Sick: not read\n"), text.said.left(100).constData());
    QCOMPARE(text.code, 1);
    const Outcome json = run("-", {QStringLiteral("--list"), QStringLiteral("--json")});
    const QByteArray error = tokenIn(json).value(QStringLiteral("error")).toString().toUtf8();
    QVERIFY2(error.contains(reason), error.constData());
    QCOMPARE(json.code, 1);
    m_token->control();
    const Outcome healthy = run("-", {QStringLiteral("--list"), QStringLiteral("--json")});
    QVERIFY(!tokenIn(healthy).contains(QStringLiteral("error")));
    QCOMPARE(healthy.code, 0);
}

void TestIncomplete::tellsHalfReadTokens()
{
    m_token->control("hold C_FindObjectsInit *\n");
    const Outcome outcome = run("~1", {QStringLiteral("--list"), QStringLiteral("--json")});
    QCOMPARE(tokenIn(outcome).value(QStringLiteral("error")).toString(),
             QStringLiteral("It has not been read to its end in time."));
    QVERIFY2(outcome.complained.contains("The token Sick could not be read"),
             outcome.complained.constData());
    QCOMPARE(outcome.code, 1);
}

void TestIncomplete::tellsCertificatesLeftOut()
{
    const QString id = QStringLiteral("02");
    const QByteArray other = TestAuthority().issue(m_token->token().publicKey(QStringLiteral("01")),
                                                   QStringLiteral("/CN=Boris"));
    QVERIFY(m_token->token().writeObject(QStringLiteral("cert"), other, id, id));
    // One of the two, asked for twice.
    m_token->control("lie CKA_VALUE 1 fails\nlie CKA_VALUE 2 fails\n");
    const Outcome outcome = run("-", {QStringLiteral("--list"), QStringLiteral("--json")});
    QCOMPARE(tokenIn(outcome).value(QStringLiteral("error")).toString(),
             QStringLiteral("There are certificates on it that could not be read, and are missing "
                            "here."));
    QVERIFY2(outcome.complained.contains("The token Sick could not be read"),
             outcome.complained.constData());
    QCOMPARE(tokenIn(outcome).value(QStringLiteral("certificates")).toArray().size(), 1);
    QCOMPARE(outcome.code, 1);
    QVERIFY(m_token->token().removeObject(QStringLiteral("cert"), id));
}

void TestIncomplete::signsByNoNameBesideAnUnreadToken()
{
    QVERIFY(m_token->token().addToken(QStringLiteral("Second")));
    m_token->control("sick Second\n");
    const Outcome outcome = run("-", signing(QStringLiteral("Anna")));
    QCOMPARE(outcome.code, 1);
    QVERIFY2(outcome.complained.contains("The token Second could not be read"),
             outcome.complained.constData());
    QVERIFY(!QFile::exists(path(QStringLiteral("letter.p7s"))));
}

QTEST_GUILESS_MAIN(TestIncomplete)

#include "tst_incomplete.moc"
