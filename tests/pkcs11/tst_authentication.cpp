// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/keys.h"
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"

#include <QSignalSpy>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Authentication");

} // namespace

/// Keys that want a login at each use (CKA_ALWAYS_AUTHENTICATE), which SoftHSM refuses to use
/// without, and readers with their own keypad (CKF_PROTECTED_AUTHENTICATION_PATH).
class TestAuthentication : public TokenFixture {
    Q_OBJECT
public:
    TestAuthentication()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void everyUse_data();
    void everyUse();
    void wrongPinAtUse();
    void rejectedAtUse();
    void plainKeyNeedsOneLogin();
    void pinPad_data();
    void pinPad();
    void wrongOnPinPad();

private:
    bool sign(const QString &name);
    QList<QByteArray> uses() const;
    int contextLogins() const { return m_token->countText(" user=context"); }
};

void TestAuthentication::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    struct Key {
        const char *id;
        const char *type;
        const char *name;
        bool atEachUse;
    };
    const TestToken &token = m_token->token();
    for (const Key &key :
         {Key{"01", "rsa:2048", "careful RSA", true},
          Key{"02", "EC:prime256v1", "careful EC", true}, Key{"03", "rsa:2048", "plain", false}}) {
        const QString id = QString::fromLatin1(key.id);
        const QString name = QString::fromLatin1(key.name);
        QStringList arguments = {QStringLiteral("--keypairgen"),
                                 QStringLiteral("--key-type"),
                                 QString::fromLatin1(key.type),
                                 QStringLiteral("--id"),
                                 id,
                                 QStringLiteral("--label"),
                                 name,
                                 QStringLiteral("--usage-sign")};
        if (key.atEachUse)
            arguments.append(QStringLiteral("--always-auth"));
        QVERIFY(!token.tool(arguments).isNull());
        const QByteArray der =
            m_authority->issue(token.publicKey(id), QStringLiteral("/CN=") + name);
        QVERIFY(token.writeObject(QStringLiteral("cert"), der, id, name));
    }
    m_token->useInThisProcess();
    QVERIFY(start(3));
}

/// Each test starts with a token that is not logged in.
void TestAuthentication::init()
{
    QVERIFY(m_token->replug(m_store->id()));
    QVERIFY(m_stores->waitForEntries(StoreName, 3));
    m_prompt->setPin(TestToken::pin());
    m_prompt->resetCount();
    m_token->forget();
}

void TestAuthentication::cleanup()
{
    m_token->control();
}

bool TestAuthentication::sign(const QString &name)
{
    QCA::PrivateKey key = m_stores->entry(StoreName, name).keyBundle().privateKey();
    const QByteArray data("data");
    const QByteArray signature = key.signMessage(data, QCA::EMSA3_SHA256, QCA::DefaultFormat);
    return !signature.isEmpty()
        && Trivex::publicKeyOf(key).verifyMessage(data, signature, QCA::EMSA3_SHA256,
                                                  QCA::DefaultFormat);
}

/// The calls that matter for the use of a key, in their order.
QList<QByteArray> TestAuthentication::uses() const
{
    QList<QByteArray> calls;
    const auto all = m_token->calls();
    for (const QByteArray &call : all) {
        if (call == "C_SignInit" || call == "C_Login" || call == "C_Sign")
            calls.append(call);
    }
    return calls;
}

void TestAuthentication::everyUse_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("RSA") << "careful RSA";
    QTest::newRow("EC") << "careful EC";
}

/// A login of its own between C_SignInit and C_Sign (PKCS#11 2.40, 4.9), with a PIN asked for then.
void TestAuthentication::everyUse()
{
    QFETCH(QString, key);
    QVERIFY(sign(key));
    const QList<QByteArray> use = {"C_SignInit", "C_Login", "C_Sign"};
    QCOMPARE(uses(), QList<QByteArray>{"C_Login"} + use);
    QCOMPARE(contextLogins(), 1);
    QCOMPARE(m_prompt->count(), 2);
    for (int i = 2; i < 5; ++i) {
        m_token->forget();
        QVERIFY(sign(key));
        QCOMPARE(uses(), use);
        QCOMPARE(contextLogins(), 1);
        QCOMPARE(m_prompt->count(), i + 1);
        QCOMPARE(m_prompt->last().tokenName, StoreName);
    }
}

/// Costs one attempt and the signature; the next use asks anew.
void TestAuthentication::wrongPinAtUse()
{
    const QString key = QStringLiteral("careful RSA");
    QVERIFY(sign(key));
    Trivex::TokenMonitor monitor;
    QSignalSpy failed(&monitor, &Trivex::TokenMonitor::failed);
    m_token->forget();
    m_prompt->resetCount();
    m_prompt->setPin("000000");
    QVERIFY(!sign(key));
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(uses(), (QList<QByteArray>{"C_SignInit", "C_Login"}));
    QTRY_COMPARE(failed.count(), 1);
    QCOMPARE(failed.first().first().value<Trivex::TokenError>().kind, Trivex::TokenError::WrongPin);
    m_prompt->setPin(TestToken::pin());
    QVERIFY(sign(key));
    QCOMPARE(m_prompt->count(), 2);
    // The login of the token itself has not suffered.
    m_token->forget();
    QVERIFY(sign(QStringLiteral("plain")));
    QCOMPARE(m_token->count("C_Login"), 0);
}

void TestAuthentication::rejectedAtUse()
{
    const QString key = QStringLiteral("careful EC");
    QVERIFY(sign(key));
    m_token->forget();
    m_prompt->resetCount();
    m_prompt->setPin(QByteArray());
    QVERIFY(!sign(key));
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(uses(), QList<QByteArray>{"C_SignInit"});
    m_prompt->setPin(TestToken::pin());
    QVERIFY(sign(key));
}

void TestAuthentication::plainKeyNeedsOneLogin()
{
    for (int i = 0; i < 3; ++i)
        QVERIFY(sign(QStringLiteral("plain")));
    QCOMPARE(m_token->count("C_Login"), 1);
    QCOMPARE(contextLogins(), 0);
    QCOMPARE(m_prompt->count(), 1);
}

void TestAuthentication::pinPad_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("later");
    QTest::newRow("plain") << "plain" << 1 << 0;
    QTest::newRow("RSA at each use") << "careful RSA" << 2 << 1;
    QTest::newRow("EC at each use") << "careful EC" << 2 << 1;
}

/// The PIN is typed on the reader: nobody is asked here, and each login is made without one.
void TestAuthentication::pinPad()
{
    QFETCH(QString, key);
    QFETCH(int, first);
    QFETCH(int, later);
    m_token->control("pin-pad " + TestToken::pin());
    QVERIFY(sign(key));
    QCOMPARE(m_token->count("C_Login"), first);
    QCOMPARE(m_token->countText(" pin=none"), first);
    m_token->forget();
    QVERIFY(sign(key));
    QCOMPARE(m_token->count("C_Login"), later);
    QCOMPARE(m_token->countText(" pin=none"), later);
    QCOMPARE(contextLogins(), later);
    QCOMPARE(m_prompt->count(), 0);
}

/// What is mistyped on the reader is told and not repeated.
void TestAuthentication::wrongOnPinPad()
{
    m_token->control("pin-pad 000000");
    Trivex::TokenMonitor monitor;
    QSignalSpy failed(&monitor, &Trivex::TokenMonitor::failed);
    QVERIFY(!sign(QStringLiteral("plain")));
    QCOMPARE(m_token->count("C_Login"), 1);
    QCOMPARE(m_prompt->count(), 0);
    QTRY_COMPARE(failed.count(), 1);
    QCOMPARE(failed.first().first().value<Trivex::TokenError>().kind, Trivex::TokenError::WrongPin);
    m_token->control("pin-pad " + TestToken::pin());
    QVERIFY(sign(QStringLiteral("plain")));
}

QTEST_GUILESS_MAIN(TestAuthentication)
#include "tst_authentication.moc"
