// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/keymaterial.h"
#include "tests/pkcs11/extracted.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"

using namespace TrivexTest;
using Trivex::ExtractedKey;
using Trivex::TokenError;

namespace {

const QString StoreName = QStringLiteral("Leaving");

} // namespace

/// Private keys that leave their token, and tokens that wrap them in another way or not at all.
class TestExtraction : public TokenFixture {
    Q_OBJECT
public:
    TestExtraction()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void leaves_data();
    void leaves();
    void staysByItsError_data();
    void staysByItsError();
    void tokenThatWrapsNothing();
    void loginThatEnds();
    void oddLengths_data();
    void oddLengths();
    void halvesOfTwoPairs();

private:
    bool addLeaving(const char *type, const char *id, const QStringList &more);
    ExtractedKey extract(const char *id)
    {
        return extracted(m_store->id(), m_token->token().publicKey(QLatin1String(id)));
    }
};

bool TestExtraction::addLeaving(const char *type, const char *id, const QStringList &more)
{
    return !m_token->token()
                .tool(QStringList{QStringLiteral("--keypairgen"), QStringLiteral("--key-type"),
                                  QLatin1String(type), QStringLiteral("--id"), QLatin1String(id),
                                  QStringLiteral("--label"), QLatin1String(id),
                                  QStringLiteral("--sensitive"), QStringLiteral("--extractable")}
                      + more)
                .isNull();
}

void TestExtraction::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(addSigner());
    QVERIFY(addLeaving("rsa:2048", "02", {}));
    QVERIFY(addLeaving("EC:secp384r1", "03", {}));
    QVERIFY(addLeaving("rsa:2048", "04", {QStringLiteral("--always-auth")}));
    m_token->useInThisProcess();
    QVERIFY(start(1));
}

void TestExtraction::init()
{
    m_token->control();
    QVERIFY(m_token->replug(m_store->id()));
    m_prompt->resetCount();
    m_token->forget();
}

void TestExtraction::leaves_data()
{
    QTest::addColumn<QByteArray>("id");
    QTest::newRow("RSA") << QByteArray("02");
    QTest::newRow("P-384") << QByteArray("03");
    // The PIN that such a key wants at each use belongs to the uses that begin with a call of
    // their own, and C_WrapKey is none.
    QTest::newRow("PIN at each use") << QByteArray("04");
}

void TestExtraction::leaves()
{
    QFETCH(QByteArray, id);
    const ExtractedKey key = extract(id.constData());
    QCOMPARE(key.error.kind, TokenError::NoError);
    QCOMPARE(Trivex::KeyMaterial::fromPrivateInfo(key.privateInfo).publicInfo(),
             m_token->token().publicKey(QString::fromLatin1(id)));
    QCOMPARE(m_prompt->count(), 1);
}

void TestExtraction::staysByItsError_data()
{
    QTest::addColumn<QByteArray>("result");
    for (const char *result :
         {"CKR_MECHANISM_INVALID", "CKR_MECHANISM_PARAM_INVALID", "CKR_KEY_NOT_WRAPPABLE",
          "CKR_KEY_UNEXTRACTABLE", "CKR_KEY_SIZE_RANGE", "CKR_KEY_FUNCTION_NOT_PERMITTED",
          "CKR_WRAPPING_KEY_TYPE_INCONSISTENT", "CKR_FUNCTION_NOT_SUPPORTED",
          "CKR_USER_NOT_LOGGED_IN"})
        QTest::newRow(result) << QByteArray(result);
}

void TestExtraction::staysByItsError()
{
    QFETCH(QByteArray, result);
    m_token->control("fail C_WrapKey * " + result);
    const ExtractedKey key = extract("02");
    QCOMPARE(key.error.kind, TokenError::KeyStays);
    QVERIFY(key.privateInfo.isEmpty());
    QCOMPARE(m_prompt->count(), 1);
}

/// This token encrypts by AES-CBC with padding, which wraps nothing there.
void TestExtraction::tokenThatWrapsNothing()
{
    m_token->control("fail C_GetMechanismInfo 1 CKR_MECHANISM_INVALID\n"
                     "fail C_GetMechanismInfo 2 CKR_MECHANISM_INVALID");
    QCOMPARE(extract("02").error.kind, TokenError::KeyStays);
    QCOMPARE(m_token->count("C_GetMechanismInfo"), 3);
    QCOMPARE(m_token->count("C_WrapKey"), 0);
}

/// What fails for want of a login says nothing of the key.
void TestExtraction::loginThatEnds()
{
    m_token->control("logout-at C_WrapKey 1\nfail C_WrapKey 1 CKR_USER_NOT_LOGGED_IN");
    QCOMPARE(extract("02").error.kind, TokenError::NotLoggedIn);
}

void TestExtraction::oddLengths_data()
{
    QTest::addColumn<QByteArray>("order");
    QTest::addColumn<int>("calls");
    QTest::newRow("none") << QByteArray("report C_WrapKey 1 0") << 1;
    QTest::newRow("more than any key has") << QByteArray("report C_WrapKey 1 65537") << 1;
    QTest::newRow("more than there is")
        << QByteArray("report C_WrapKey 1 18446744073709551615") << 1;
    QTest::newRow("more than there was room") << QByteArray("report C_WrapKey 2 65537") << 2;
}

/// What a token says of the length of what it gives out is not believed.
void TestExtraction::oddLengths()
{
    QFETCH(QByteArray, order);
    QFETCH(int, calls);
    m_token->control(order);
    const ExtractedKey key = extract("02");
    QCOMPARE(key.error.kind, TokenError::DeviceFailure);
    QVERIFY(key.privateInfo.isEmpty());
    QCOMPARE(m_token->count("C_WrapKey"), calls);
    m_token->control();
    QVERIFY(!extract("02").privateInfo.isEmpty());
}

/// Another program has given two halves the same id, and a key on a curve does not say which one it
/// belongs to. Nobody gets a stranger's key in a file under the name of his own.
void TestExtraction::halvesOfTwoPairs()
{
    const TestToken &token = m_token->token();
    const QString id = QStringLiteral("05");
    const QString otherId = QStringLiteral("06");
    QVERIFY(addLeaving("EC:secp384r1", "05", {}) && addLeaving("EC:secp384r1", "06", {}));
    const QByteArray publicInfo = token.publicKey(id);
    QVERIFY(token.removeObject(QStringLiteral("pubkey"), otherId));
    QVERIFY(token.writeObject(QStringLiteral("pubkey"), publicInfo, otherId, otherId));
    for (const char *type : {"pubkey", "privkey"})
        QVERIFY(token.removeObject(QLatin1String(type), id));
    const ExtractedKey key = extracted(m_store->id(), publicInfo);
    QVERIFY(key.privateInfo.isEmpty());
    QCOMPARE(key.error.kind, TokenError::DeviceFailure);
    QVERIFY(m_token->count("C_WrapKey") > 0);
}

QTEST_GUILESS_MAIN(TestExtraction)
#include "tst_extraction.moc"
