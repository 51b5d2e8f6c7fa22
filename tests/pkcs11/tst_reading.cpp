// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/keys.h"
#include "qca/adapter/tokens.h"
#include "tests/pkcs11/stores.h"
#include "tests/support/testcertificates.h"
#include "tests/support/testtoken.h"

using namespace TrivexTest;

/// Key stores of tokens, as QCA's users see them.
class TestReading : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void pairing();

private:
    std::unique_ptr<TestToken> m_token;
    std::unique_ptr<TestAuthority> m_authority;
    std::unique_ptr<QCA::Initializer> m_qca;
    std::unique_ptr<Stores> m_stores;
};

void TestReading::initTestCase()
{
    m_token = std::make_unique<TestToken>(QStringLiteral("Reading"));
    if (!m_token->isValid())
        QFAIL(qPrintable(m_token->problem()));
    m_authority = std::make_unique<TestAuthority>();
    QVERIFY(m_authority->isValid());
    QVERIFY(m_token->generateKeyPair(QStringLiteral("rsa:2048"), QStringLiteral("01"),
                                     QStringLiteral("rsa")));
    QVERIFY(m_token->generateKeyPair(QStringLiteral("EC:secp384r1"), QStringLiteral("02"),
                                     QStringLiteral("ec")));
    QVERIFY(m_token->generateKeyPair(QStringLiteral("rsa:2048"), QStringLiteral("03"),
                                     QStringLiteral("bare")));
    const auto certify = [this](const QString &keyId, const QString &certificateId,
                                const QString &subject, const QString &label) {
        const QByteArray der = m_authority->issue(m_token->publicKey(keyId), subject);
        return !der.isEmpty()
            && m_token->writeObject(QStringLiteral("cert"), der, certificateId, label);
    };
    QVERIFY(certify(QStringLiteral("01"), QStringLiteral("01"), QStringLiteral("/CN=Анна"),
                    QStringLiteral("rsa")));
    // Under another id than its key: found by the key itself.
    QVERIFY(certify(QStringLiteral("02"), QStringLiteral("77"), QStringLiteral("/CN=Curve"),
                    QStringLiteral("ec")));
    QVERIFY(m_token->writeObject(QStringLiteral("cert"), m_authority->certificate(),
                                 QStringLiteral("99"), QStringLiteral("root")));
    QVERIFY(m_token->addToken(QStringLiteral("Reading")));
    m_token->useInThisProcess();
    m_qca = std::make_unique<QCA::Initializer>();
    m_stores = std::make_unique<Stores>();
    QVERIFY(m_stores->waitFor(QStringLiteral("Reading")));
}

void TestReading::pairing()
{
    const QString store = QStringLiteral("Reading");
    // One of the two tokens of that name has the objects.
    QTRY_VERIFY_WITH_TIMEOUT(m_stores->names().size() == 2, 5000);
    QTRY_VERIFY(!m_stores->entries(m_stores->names().at(0)).isEmpty()
                || !m_stores->entries(m_stores->names().at(1)).isEmpty());
    const QString filled = m_stores->entries(store).isEmpty() ? m_stores->names().at(1) : store;
    const auto rsa = m_stores->entry(filled, QStringLiteral("rsa"));
    QVERIFY(!rsa.isNull());
    QCOMPARE(rsa.type(), QCA::KeyStoreEntry::TypeKeyBundle);
    QVERIFY(!rsa.keyBundle().isNull());
    QVERIFY(!rsa.keyBundle().privateKey().isNull());
    QVERIFY(rsa.keyBundle().privateKey().isRSA());
    QVERIFY(rsa.keyBundle().privateKey().isPrivate());
    QVERIFY(!rsa.keyBundle().privateKey().canExport());
    const auto ec = m_stores->entry(filled, QStringLiteral("ec"));
    QVERIFY(!ec.isNull());
    QCOMPARE(ec.type(), QCA::KeyStoreEntry::TypeKeyBundle);
    QCOMPARE(Trivex::keyType(ec.keyBundle().privateKey()), int(Trivex::EllipticCurveKey));
    const auto root = m_stores->entry(filled, QStringLiteral("root"));
    QVERIFY(!root.isNull());
    QCOMPARE(root.type(), QCA::KeyStoreEntry::TypeCertificate);
    QCOMPARE(m_stores->entries(filled).size(), 3);
}

QTEST_GUILESS_MAIN(TestReading)
#include "tst_reading.moc"
