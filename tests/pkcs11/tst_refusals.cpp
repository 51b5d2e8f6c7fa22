// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/keygenerator.h"
#include "qca/keys/keys.h"
#include "qca/questions/storedanswers.h"
#include "tests/pkcs11/failurefixture.h"
#include "tests/support/needtokens.h"

#include <QSignalSpy>

using namespace TrivexTest;
using Trivex::TokenError;

namespace {

const QString StoreName = QStringLiteral("Refusals");
const QString FreshName = QStringLiteral("Fresh");

} // namespace

/// Tokens that refuse: what is said of it, what is tried once more, and what is never tried.
class TestRefusals : public FailureFixture {
    Q_OBJECT
public:
    TestRefusals()
        : FailureFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void exponent_data();
    void exponent();
    void otherGenerations_data();
    void otherGenerations();
    void noUserPin();
    void saysThatItHasNoUserPin();
    void storedPinIsTriedAllTheSame();
    void keypadIsTriedAllTheSame();
    void tokenWithoutUserPin();
    void unannouncedLogin();
    void loginThatHelpsNothing();
    void readOnly();
    void unsupportedObject();
    void tokenThatDoesNotSign_data();
    void tokenThatDoesNotSign();
    void tokenThatSaysNothingOfMechanisms_data();
    void tokenThatSaysNothingOfMechanisms();
    void unfitKeysAreTold();
    void cleanupTestCase();

private:
    QCA::PrivateKey generate(bool rsa, int exponent = 3);
    int objects() const { return m_token->token().objectCount(); }

    QCA::Certificate m_root;
    int m_finished = 0;
};

void TestRefusals::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(m_token->token().addTokenWithoutUserPin(FreshName));
    m_token->useInThisProcess();
    QVERIFY(start(0));
    m_root = root();
    QVERIFY(!m_root.isNull());
}

void TestRefusals::init()
{
    QVERIFY(m_token->replug(m_store->id()));
    countAfresh();
    m_finished = 0;
}

void TestRefusals::cleanupTestCase()
{
    if (m_token)
        m_token->control();
}

QCA::PrivateKey TestRefusals::generate(bool rsa, int exponent)
{
    Trivex::KeyGenerator generator;
    generator.setBlockingEnabled(false);
    generator.setTarget(m_store->id(), QStringLiteral("made"));
    QSignalSpy finished(&generator, &Trivex::KeyGenerator::finished);
    if (rsa)
        generator.createRSA(1024, exponent, QStringLiteral("qca-norvel-pkcs11"));
    else
        generator.createEC(QStringLiteral("ec-secp384r1"), QStringLiteral("qca-norvel-gost"));
    if (finished.isEmpty() && !finished.wait(20000))
        qFatal("a generation did not end");
    QTest::qWait(50); // a second end would be told now
    m_finished = finished.size();
    return generator.key();
}

void TestRefusals::exponent_data()
{
    QTest::addColumn<QByteArray>("order");
    for (const char *code :
         {"CKR_FUNCTION_FAILED", "CKR_GENERAL_ERROR", "CKR_ATTRIBUTE_VALUE_INVALID",
          "CKR_TEMPLATE_INCOMPLETE", "CKR_TEMPLATE_INCONSISTENT", "CKR_ARGUMENTS_BAD",
          "CKR_DEVICE_ERROR", "CKR_KEY_SIZE_RANGE", "0x80000001"}) {
        QTest::addRow("%s", code) << QByteArray("fail C_GenerateKeyPair 1 ") + code;
        QTest::addRow("%s, but made", code) << QByteArray("fail-after C_GenerateKeyPair 1 ") + code;
    }
}

/// A token that refuses the exponent 3 is asked for 65537; whoever wanted the key sees one key.
void TestRefusals::exponent()
{
    QFETCH(QByteArray, order);
    const int before = objects();
    m_token->control(order);
    const QCA::PrivateKey key = generate(true);
    QVERIFY2(!key.isNull(), qPrintable(lastError().returnName));
    QCOMPARE(Trivex::publicKeyOf(key).toRSA().e(), QCA::BigInteger(65537));
    QCOMPARE(m_token->count("C_GenerateKeyPair"), 2);
    QCOMPARE(m_finished, 1);
    QVERIFY(m_errors.isEmpty());
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(objects() - before, 2);
    removeGenerated();
}

void TestRefusals::otherGenerations_data()
{
    QTest::addColumn<QByteArray>("code");
    QTest::addColumn<bool>("rsa");
    QTest::addColumn<int>("exponent");
    QTest::addColumn<int>("calls");
    const auto row = [](const char *name, const char *code, bool rsa, int exponent, int calls) {
        QTest::newRow(name) << QByteArray(code) << rsa << exponent << calls;
    };
    row("wrong PIN", "CKR_PIN_INCORRECT", true, 3, 1);
    row("locked PIN", "CKR_PIN_LOCKED", true, 3, 1);
    row("no PIN", "CKR_USER_PIN_NOT_INITIALIZED", true, 3, 1);
    row("not logged in", "CKR_USER_NOT_LOGGED_IN", true, 3, 1);
    row("cancelled", "CKR_FUNCTION_CANCELED", true, 3, 1);
    row("removed", "CKR_DEVICE_REMOVED", true, 3, 1);
    row("session gone", "CKR_SESSION_HANDLE_INVALID", true, 3, 1);
    row("65537", "CKR_FUNCTION_FAILED", true, 65537, 1);
    row("elliptic curve", "CKR_FUNCTION_FAILED", false, 0, 1);
    row("both refused", "CKR_TEMPLATE_INCOMPLETE", true, 3, 2);
}

void TestRefusals::otherGenerations()
{
    QFETCH(QByteArray, code);
    QFETCH(bool, rsa);
    QFETCH(int, exponent);
    QFETCH(int, calls);
    const int before = objects();
    m_token->control("fail C_GenerateKeyPair * " + code);
    QVERIFY(generate(rsa, exponent).isNull());
    QCOMPARE(m_token->count("C_GenerateKeyPair"), calls);
    QCOMPARE(m_finished, 1);
    QCOMPARE(m_errors.size(), 1);
    QCOMPARE(lastError().returnName.toLatin1(), code);
    QCOMPARE(m_prompt->count(), 1);
    m_token->control();
    QCOMPARE(objects(), before);
}

void TestRefusals::noUserPin()
{
    m_token->control("fail C_Login * CKR_USER_PIN_NOT_INITIALIZED");
    QCOMPARE(m_stores->write(m_store, m_root), QString());
    QCOMPARE(m_errors.size(), 1);
    QCOMPARE(lastError().kind, TokenError::PinNotSet);
    QCOMPARE(lastError().function, QStringLiteral("C_Login"));
    QCOMPARE(m_token->count("C_Login"), 1);
}

/// Whatever was wanted of it: the reason, and nobody is asked for a PIN that there is none of.
void TestRefusals::saysThatItHasNoUserPin()
{
    const QString id = m_stores->write(m_store, m_root);
    QVERIFY(!id.isEmpty());
    QVERIFY(m_token->replug(m_store->id(), "no-pin-flag"));
    m_token->forget();
    m_prompt->resetCount();
    QCOMPARE(m_stores->write(m_store, m_root), QString());
    QVERIFY(!m_stores->remove(m_store, id));
    QVERIFY(generate(true).isNull());
    QVERIFY(generate(false).isNull());
    QCOMPARE(m_errors.size(), 4);
    for (const TokenError &error : qAsConst(m_errors))
        QCOMPARE(error.kind, TokenError::PinNotSet);
    QCOMPARE(lastError().function, QStringLiteral("C_GetTokenInfo"));
    QCOMPARE(m_prompt->count(), 0);
    QCOMPARE(m_token->count("C_Login"), 0);
    // The PIN has been set meanwhile, by another program.
    m_token->control();
    QVERIFY(m_stores->remove(m_store, id));
    QCOMPARE(m_prompt->count(), 1);
}

/// It was typed before, so that nobody has to be asked; and what a login shows is believed.
void TestRefusals::storedPinIsTriedAllTheSame()
{
    QVERIFY(m_token->replug(m_store->id(), "no-pin-flag"));
    m_token->forget();
    Trivex::StoredAnswers answers;
    answers.registerSet();
    answers.setKeyStoreId(m_store->id());
    answers.setPassword(QCA::SecureArray(TestToken::pin()));
    const QString id = m_stores->write(m_store, m_root);
    QVERIFY2(!id.isEmpty(), qPrintable(lastError().function));
    QCOMPARE(m_prompt->count(), 0);
    QCOMPARE(m_token->count("C_Login"), 1);
    // The session has ended, and with it the login.
    m_token->control("no-pin-flag\nend-sessions-at C_GetSessionInfo 1");
    QVERIFY(m_stores->remove(m_store, id));
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(m_token->count("C_Login"), 2);
    QVERIFY(m_errors.isEmpty());
}

void TestRefusals::keypadIsTriedAllTheSame()
{
    QVERIFY(m_token->replug(m_store->id(), "no-pin-flag\npin-pad " + TestToken::pin()));
    const QString id = m_stores->write(m_store, m_root);
    QVERIFY2(!id.isEmpty(), qPrintable(lastError().function));
    QVERIFY(m_stores->remove(m_store, id));
    QCOMPARE(m_prompt->count(), 0);
}

/// As its administrator leaves it, without the module's orders.
void TestRefusals::tokenWithoutUserPin()
{
    QCA::KeyStore *fresh = m_stores->waitFor(FreshName);
    QVERIFY(fresh);
    QTRY_VERIFY(!Trivex::TokenMonitor::token(fresh->id()).loading);
    QCOMPARE(m_stores->write(fresh, m_root), QString());
    QCOMPARE(m_errors.size(), 1);
    QCOMPARE(lastError().kind, TokenError::PinNotSet);
    QCOMPARE(m_prompt->count(), 0);
    QCOMPARE(m_token->count("C_Login"), 0);
    m_prompt->resetCount();
}

/// The token's flags say nothing of a login, its calls want one.
void TestRefusals::unannouncedLogin()
{
    m_token->control("no-login-flag");
    const int before = objects();
    QVERIFY2(!generate(false).isNull(), qPrintable(lastError().returnName));
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(m_token->count("C_Login"), 1);
    QVERIFY(m_errors.isEmpty());
    QCOMPARE(objects() - before, 2);
    removeGenerated();
}

void TestRefusals::loginThatHelpsNothing()
{
    m_token->control("no-login-flag\nfail C_GenerateKeyPair * CKR_USER_NOT_LOGGED_IN");
    QVERIFY(generate(false).isNull());
    QCOMPARE(m_errors.size(), 1);
    QCOMPARE(lastError().kind, TokenError::NotLoggedIn);
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(m_token->count("C_GenerateKeyPair"), 2);
}

/// Said before anybody is asked for a PIN.
void TestRefusals::readOnly()
{
    const QCA::KeyBundle bundle = makeCurveBundle(QStringLiteral("/CN=Bundle"));
    const QString id = m_stores->write(m_store, m_root);
    QVERIFY(!id.isEmpty());
    QVERIFY(m_token->replug(m_store->id()));
    m_prompt->resetCount();
    m_token->control("read-only");
    QCOMPARE(m_stores->write(m_store, m_root), QString());
    QCOMPARE(lastError().kind, TokenError::ReadOnly);
    QCOMPARE(m_stores->write(m_store, bundle), QString());
    QCOMPARE(lastError().kind, TokenError::ReadOnly);
    QVERIFY(!m_stores->remove(m_store, id));
    QCOMPARE(lastError().kind, TokenError::ReadOnly);
    QVERIFY(generate(false).isNull());
    QCOMPARE(lastError().kind, TokenError::ReadOnly);
    QCOMPARE(m_errors.size(), 4);
    QCOMPARE(m_prompt->count(), 0);
    QTRY_VERIFY(Trivex::TokenMonitor::token(m_store->id()).readOnly);
    m_token->control();
    QTRY_VERIFY(!Trivex::TokenMonitor::token(m_store->id()).readOnly);
    QVERIFY(m_stores->remove(m_store, id));
}

void TestRefusals::unsupportedObject()
{
    m_token->control("fail C_CreateObject 1 CKR_TEMPLATE_INCOMPLETE");
    QCOMPARE(m_stores->write(m_store, m_root), QString());
    QCOMPARE(lastError().kind, TokenError::NotSupported);
    QCOMPARE(lastError().returnName, QStringLiteral("CKR_TEMPLATE_INCOMPLETE"));
}

void TestRefusals::tokenThatDoesNotSign_data()
{
    QTest::addColumn<bool>("rsa");
    QTest::newRow("CKM_RSA_PKCS") << true;
    QTest::newRow("CKM_ECDSA") << false;
}

/// It says so itself, so that nobody types a PIN for nothing.
void TestRefusals::tokenThatDoesNotSign()
{
    QFETCH(bool, rsa);
    QCA::PrivateKey key = generate(rsa);
    QVERIFY(!key.isNull());
    QVERIFY(m_token->replug(m_store->id(), QByteArray("without ") + QTest::currentDataTag()));
    countAfresh();
    QVERIFY(signature(key).isEmpty());
    QCOMPARE(m_prompt->count(), 0);
    QCOMPARE(m_token->count("C_Login"), 0);
    QCOMPARE(m_errors.size(), 1);
    QCOMPARE(lastError().kind, TokenError::NotSupported);
    QCOMPARE(lastError().purpose, Trivex::Purpose::Sign);
    m_token->control();
    QVERIFY(!signature(key).isEmpty());
    removeGenerated();
}

void TestRefusals::tokenThatSaysNothingOfMechanisms_data()
{
    QTest::addColumn<QByteArray>("result");
    for (const QByteArray result : {"CKR_FUNCTION_NOT_SUPPORTED", "CKR_DEVICE_ERROR",
                                    "CKR_DEVICE_MEMORY", "CKR_HOST_MEMORY", "CKR_GENERAL_ERROR"})
        QTest::newRow(result.constData()) << result;
}

/// Such a token is believed to sign.
void TestRefusals::tokenThatSaysNothingOfMechanisms()
{
    QFETCH(QByteArray, result);
    QCA::PrivateKey key = generate(false);
    QVERIFY(!key.isNull());
    const QByteArray silent = "fail C_GetMechanismInfo * " + result;
    m_token->control(silent);
    QVERIFY(!signature(key).isEmpty());
    QVERIFY(m_errors.isEmpty());
    // What fails then is told as it is.
    m_token->control(silent + "\nfail C_SignInit * CKR_KEY_TYPE_INCONSISTENT");
    QVERIFY(signature(key).isEmpty());
    QCOMPARE(m_errors.size(), 1);
    QCOMPARE(lastError().function, QStringLiteral("C_SignInit"));
    m_token->control();
    removeGenerated();
}

/// Which keys are offered for a signature is asked for before anybody signs.
void TestRefusals::unfitKeysAreTold()
{
    QVERIFY(addSigner());
    const QString id = m_store->id();
    QVERIFY(m_token->replug(id));
    QTRY_COMPARE(m_stores->entries(StoreName).size(), 1);
    const QSet<QString> signer = {m_stores->entries(StoreName).first().id()};
    const auto unfit = [&] { return Trivex::TokenMonitor::look(id).unfitToSign; };
    m_token->control("without CKM_RSA_PKCS");
    Trivex::TokenMonitor::takeLook(id);
    QTRY_COMPARE(unfit(), signer);
    // One that fails when it is asked may sign.
    m_token->control("fail C_GetMechanismInfo * CKR_DEVICE_ERROR");
    Trivex::TokenMonitor::takeLook(id);
    QTRY_VERIFY(unfit().isEmpty());
    QVERIFY(Trivex::TokenMonitor::look(id).isTaken);
    // Nobody was asked for a PIN, and nobody heard of a failure.
    QCOMPARE(m_prompt->count(), 0);
    QVERIFY(m_errors.isEmpty());
    m_token->control();
}

QTEST_GUILESS_MAIN(TestRefusals)
#include "tst_refusals.moc"
