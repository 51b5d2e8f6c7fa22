// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/keygenerator.h"
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/faultytoken.h"
#include "tests/pkcs11/pinprompt.h"
#include "tests/pkcs11/stores.h"
#include "tests/support/testcertificates.h"

#include <QSignalSpy>

using namespace TrivexTest;

namespace {

const QString StoreName = QStringLiteral("Lying");
const QString OpenSsl = QStringLiteral("qca-norvel-openssl");

} // namespace

/// A module whose calls succeed, but with lengths and handles that can't be. The operation fails
/// with an error, nothing is left of it and nothing else is touched; the next one works.
class TestLyingToken : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void signatures_data();
    void signatures();
    void pairs_data();
    void pairs();
    void writtenObject();
    void cleanupTestCase();

private:
    QByteArray sign(const QString &name);
    bool generate();

    std::unique_ptr<FaultyToken> m_token;
    std::unique_ptr<TestAuthority> m_authority;
    std::unique_ptr<QCA::Initializer> m_qca;
    std::unique_ptr<PinPrompt> m_prompt;
    std::unique_ptr<Stores> m_stores;
    QCA::KeyStore *m_store = nullptr;
    Trivex::TokenMonitor m_monitor;
};

void TestLyingToken::initTestCase()
{
    m_token = std::make_unique<FaultyToken>(StoreName);
    TestToken &token = m_token->token();
    if (!token.isValid())
        QFAIL(qPrintable(token.problem()));
    m_authority = std::make_unique<TestAuthority>();
    const auto put = [&](const char *type, const char *id, const char *label) {
        return token.generateKeyPair(QLatin1String(type), QLatin1String(id), QLatin1String(label))
            && token.writeObject(QStringLiteral("cert"),
                                 m_authority->issue(token.publicKey(QLatin1String(id)),
                                                    QStringLiteral("/CN=Signer")),
                                 QLatin1String(id), QLatin1String(label));
    };
    QVERIFY(put("rsa:2048", "01", "RSA"));
    QVERIFY(put("EC:secp384r1", "02", "EC"));
    m_token->useInThisProcess();
    m_qca = std::make_unique<QCA::Initializer>();
    m_prompt = std::make_unique<PinPrompt>(TestToken::pin());
    m_stores = std::make_unique<Stores>();
    m_store = m_stores->waitFor(StoreName);
    QVERIFY(m_store);
    QVERIFY(m_stores->waitForEntries(StoreName, 2));
}

void TestLyingToken::cleanupTestCase()
{
    if (m_token)
        m_token->control();
}

QByteArray TestLyingToken::sign(const QString &name)
{
    QCA::PrivateKey key = m_stores->entry(StoreName, name).keyBundle().privateKey();
    return key.isNull()
        ? QByteArray()
        : key.signMessage(QByteArray("data"), QCA::EMSA3_SHA256, QCA::DefaultFormat);
}

bool TestLyingToken::generate()
{
    Trivex::KeyGenerator generator;
    generator.setBlockingEnabled(false);
    generator.setTarget(m_store->id(), QStringLiteral("made"));
    QSignalSpy finished(&generator, &Trivex::KeyGenerator::finished);
    generator.createEC(QStringLiteral("ec-secp384r1"), QStringLiteral("qca-norvel-gost"));
    if (finished.isEmpty() && !finished.wait(20000))
        qFatal("a generation did not end");
    return !generator.key().isNull();
}

void TestLyingToken::signatures_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("length");
    for (const char *name : {"RSA", "EC"}) {
        for (const char *length :
             {"0", "1", "255", "257", "2049", "1000000000", "4294967297", "18446744073709551615"})
            QTest::addRow("%s %s", name, length) << QString::fromLatin1(name) << QByteArray(length);
    }
}

void TestLyingToken::signatures()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, length);
    QVERIFY(!sign(name).isEmpty());
    QSignalSpy failed(&m_monitor, &Trivex::TokenMonitor::failed);
    m_token->control("report C_Sign 1 " + length);
    QVERIFY(sign(name).isEmpty());
    QTRY_COMPARE(failed.size(), 1);
    QCOMPARE(failed.first().first().value<Trivex::TokenError>().function, QStringLiteral("C_Sign"));
    QVERIFY(!sign(name).isEmpty());
}

void TestLyingToken::pairs_data()
{
    QTest::addColumn<QByteArray>("handle");
    for (const char *handle : {"0", "1", "2", "3", "18446744073709551615"})
        QTest::newRow(handle) << QByteArray(handle);
}

void TestLyingToken::pairs()
{
    QFETCH(QByteArray, handle);
    const int before = m_token->token().objectCount();
    m_token->control("report C_GenerateKeyPair 1 " + handle);
    QVERIFY(!generate());
    QCOMPARE(m_token->token().objectCount(), before);
    QVERIFY(!sign(QStringLiteral("RSA")).isEmpty());
    QVERIFY(!sign(QStringLiteral("EC")).isEmpty());
}

void TestLyingToken::writtenObject()
{
    const auto root = QCA::Certificate::fromDER(m_authority->certificate(), nullptr, OpenSsl);
    const int before = m_token->token().objectCount();
    m_token->control("report C_CreateObject 1 0");
    QCOMPARE(m_stores->write(m_store, root), QString());
    QCOMPARE(m_token->token().objectCount(), before);
    m_token->control();
    const QString id = m_stores->write(m_store, root);
    QVERIFY(!id.isEmpty());
    QVERIFY(m_stores->remove(m_store, id));
    QCOMPARE(m_token->token().objectCount(), before);
}

QTEST_GUILESS_MAIN(TestLyingToken)
#include "tst_lyingtoken.moc"
