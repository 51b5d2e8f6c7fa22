// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/keys.h"
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/tokenfixture.h"
#include "tests/support/needtokens.h"

#include <QSignalSpy>

#include <thread>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Decryption");
const QByteArray Plain = QByteArrayLiteral("what nobody else may read");

} // namespace

/// What was encrypted to a key of a token is decrypted by the token, with the same questions and
/// the same ends as a signature.
class TestDecryption : public TokenFixture {
    Q_OBJECT
public:
    TestDecryption()
        : TokenFixture(StoreName)
    {
    }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void plainText_data();
    void plainText();
    void askedForOnce();
    void otherPaddings();
    void curveKeys();
    void failures_data();
    void failures();
    void withoutAPin();
    void cancelled();

private:
    QCA::PrivateKey key(const QString &name = QStringLiteral("signer")) const
    {
        return m_stores->entry(StoreName, name).keyBundle().privateKey();
    }
    QByteArray encrypted(const QByteArray &plain) { return encryptedTo(key(), plain); }
    /// A null text where it failed.
    static QByteArray decrypted(QCA::PrivateKey key, const QByteArray &data);

    QByteArray m_data;
};

void TestDecryption::initTestCase()
{
    TRIVEX_NEED_TOKENS();
    QVERIFY(makeToken());
    QVERIFY(addSigner());
    QVERIFY(addKey(QStringLiteral("EC:secp256r1"), QStringLiteral("02"), QStringLiteral("curve")));
    m_token->useInThisProcess();
    QVERIFY(start(2));
    m_prompt.reset();
    m_data = encrypted(Plain);
    QCOMPARE(m_data.size(), 256);
}

/// Each test starts with a token that is not logged in.
void TestDecryption::init()
{
    QVERIFY(m_token->replug(m_store->id()));
    QVERIFY(m_stores->waitForEntries(StoreName, 2));
    m_prompt = std::make_unique<PinPrompt>(TestToken::pin());
    m_token->forget();
}

void TestDecryption::cleanup()
{
    m_token->control();
    m_prompt.reset();
}

QByteArray TestDecryption::decrypted(QCA::PrivateKey key, const QByteArray &data)
{
    QCA::SecureArray plain;
    if (!key.decrypt(data, &plain, QCA::EME_PKCS1v15))
        return {};
    const QByteArray result = plain.toByteArray();
    return result.isNull() ? QByteArray("") : result;
}

void TestDecryption::plainText_data()
{
    QTest::addColumn<QByteArray>("plain");
    QTest::newRow("text") << Plain;
    QTest::newRow("zeros") << QByteArray(16, '\0');
    QTest::newRow("one octet") << QByteArray("x");
    QTest::newRow("as much as fits") << QByteArray(256 - 11, 'y');
}

void TestDecryption::plainText()
{
    QFETCH(QByteArray, plain);
    QVERIFY(key().canDecrypt());
    QCOMPARE(decrypted(key(), encrypted(plain)), plain);
}

void TestDecryption::askedForOnce()
{
    QCOMPARE(decrypted(key(), m_data), Plain);
    QCOMPARE(decrypted(key(), m_data), Plain);
    QVERIFY(signs());
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(m_prompt->last().purpose, Trivex::Purpose::Decrypt);
    QCOMPARE(m_token->count("C_Login"), 1);
    QCOMPARE(m_token->count("C_Decrypt"), 2);
    QCOMPARE(m_token->count("C_Sign"), 1);
}

// The token is not asked to take one padding for another, and nobody for a PIN.
void TestDecryption::otherPaddings()
{
    QCA::PrivateKey used = key();
    for (const QCA::EncryptionAlgorithm padding :
         {QCA::EME_PKCS1_OAEP, QCA::EME_PKCS1v15_SSL, QCA::EME_NO_PADDING}) {
        QCA::SecureArray plain;
        QVERIFY(!used.decrypt(m_data, &plain, padding));
        QVERIFY(plain.isEmpty());
    }
    QCOMPARE(m_prompt->count(), 0);
    QCOMPARE(m_token->count("C_DecryptInit"), 0);
}

void TestDecryption::curveKeys()
{
    QVERIFY(!key(QStringLiteral("curve")).canDecrypt());
    QVERIFY(decrypted(key(QStringLiteral("curve")), m_data).isNull());
    QCOMPARE(m_token->count("C_Decrypt"), 0);
}

void TestDecryption::failures_data()
{
    QTest::addColumn<QByteArray>("orders");
    QTest::addColumn<QByteArray>("function");
    const auto row = [](const char *orders, const char *function) {
        QTest::newRow(orders) << QByteArray(orders) << QByteArray(function);
    };
    row("fail C_DecryptInit * CKR_MECHANISM_INVALID", "C_DecryptInit");
    row("fail C_DecryptInit * CKR_KEY_FUNCTION_NOT_PERMITTED", "C_DecryptInit");
    row("fail C_Decrypt * 0x40", "C_Decrypt"); // CKR_ENCRYPTED_DATA_INVALID
    row("fail C_Decrypt * CKR_BUFFER_TOO_SMALL", "C_Decrypt");
    row("fail-after C_Decrypt * CKR_DEVICE_ERROR", "C_Decrypt");
    // More than there was room for.
    row("report C_Decrypt * 2049", "C_Decrypt");
    row("report C_Decrypt * 18446744073709551615", "C_Decrypt");
}

/// Told by name, without any plain text, and the token works on.
void TestDecryption::failures()
{
    QFETCH(QByteArray, orders);
    QFETCH(QByteArray, function);
    Trivex::TokenMonitor monitor;
    QSignalSpy failed(&monitor, &Trivex::TokenMonitor::failed);
    m_token->control(orders);
    QVERIFY(decrypted(key(), m_data).isNull());
    QTRY_COMPARE(failed.count(), 1);
    const auto error = failed.first().first().value<Trivex::TokenError>();
    QCOMPARE(error.function, QString::fromLatin1(function));
    QCOMPARE(error.keyStoreId, m_store->id());
    QCOMPARE(error.purpose, Trivex::Purpose::Decrypt);
    m_token->control();
    QCOMPARE(decrypted(key(), m_data), Plain);
    QCOMPARE(m_token->count("C_Login"), 1);
}

void TestDecryption::withoutAPin()
{
    m_prompt->setPin({});
    QVERIFY(decrypted(key(), m_data).isNull());
    QCOMPARE(m_prompt->count(), 1);
    QCOMPARE(m_token->count("C_Login"), 0);
    m_prompt->setPin("000000");
    QVERIFY(decrypted(key(), m_data).isNull());
    QCOMPARE(m_token->count("C_Login"), 1);
    QCOMPARE(m_token->count("C_DecryptInit"), 0);
}

void TestDecryption::cancelled()
{
    m_token->control("delay C_DecryptInit 1 1000");
    QByteArray result = Plain;
    std::thread thread([&result, used = key(), data = m_data] { result = decrypted(used, data); });
    const bool isInside = m_token->waitUntilInside("C_DecryptInit");
    Trivex::TokenMonitor::cancel(m_store->id());
    thread.join();
    QVERIFY(isInside);
    QVERIFY(result.isNull());
    QTRY_VERIFY(!Trivex::TokenMonitor::token(m_store->id()).busy);
    QCOMPARE(m_token->count("C_Decrypt"), 0);
    QCOMPARE(decrypted(key(), m_data), Plain);
    QCOMPARE(m_prompt->count(), 1);
}

QTEST_GUILESS_MAIN(TestDecryption)
#include "tst_decryption.moc"
