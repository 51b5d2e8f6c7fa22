// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/keys.h"
#include "qca/tokens/tokens.h"
#include "tests/pkcs11/stores.h"
#include "tests/support/needtokens.h"
#include "tests/support/testcertificates.h"
#include "tests/support/testtoken.h"

#include <QSet>

using namespace TrivexTest;

/// Key stores of tokens, as QCA's users see them.
class TestReading : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void pairing();
    void chain();
    void bareKeyIsNoEntry();
    void idsAreStable();
    void lookUps();
    void restoredEntry();
    void sameLabelIsMadeDistinct();
    void hotPlug();
    void statusIsPublished();

private:
    QString filled();

    std::unique_ptr<TestToken> m_token;
    std::unique_ptr<TestAuthority> m_authority;
    std::unique_ptr<QCA::Initializer> m_qca;
    std::unique_ptr<Stores> m_stores;
};

void TestReading::initTestCase()
{
    m_token = std::make_unique<TestToken>(QStringLiteral("Reading"));
    TRIVEX_NEED_TOKENS();
    QVERIFY2(m_token->isValid(), qPrintable(m_token->problem()));
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

/// The token of the two of that name that has the objects.
QString TestReading::filled()
{
    const auto isFull = [this](const QString &name) { return m_stores->entries(name).size() == 3; };
    QString found;
    const bool isThere = QTest::qWaitFor([&] {
        const QStringList names = m_stores->names();
        for (const QString &name : names) {
            if (isFull(name))
                found = name;
        }
        return names.size() == 2 && !found.isEmpty();
    });
    return isThere ? found : QString();
}

void TestReading::pairing()
{
    const QString store = filled();
    QVERIFY(!store.isEmpty());
    QCOMPARE(m_stores->byName(store)->type(), QCA::KeyStore::SmartCard);
    const auto rsa = m_stores->entry(store, QStringLiteral("rsa"));
    QCOMPARE(rsa.type(), QCA::KeyStoreEntry::TypeKeyBundle);
    QVERIFY(rsa.keyBundle().privateKey().isRSA());
    QVERIFY(rsa.keyBundle().privateKey().isPrivate());
    QVERIFY(!rsa.keyBundle().privateKey().canExport());
    const auto ec = m_stores->entry(store, QStringLiteral("ec"));
    QCOMPARE(ec.type(), QCA::KeyStoreEntry::TypeKeyBundle);
    QCOMPARE(Trivex::keyType(ec.keyBundle().privateKey()), int(Trivex::EllipticCurveKey));
    const auto root = m_stores->entry(store, QStringLiteral("root"));
    QCOMPARE(root.type(), QCA::KeyStoreEntry::TypeCertificate);
    QVERIFY(root.keyBundle().isNull());
}

void TestReading::chain()
{
    const auto chain =
        m_stores->entry(filled(), QStringLiteral("rsa")).keyBundle().certificateChain();
    QCOMPARE(chain.size(), 2);
    QCOMPARE(chain.primary().subjectInfo().value(QCA::CommonName), QStringLiteral("Анна"));
    QCOMPARE(chain.last().toDER(), m_authority->certificate());
}

void TestReading::bareKeyIsNoEntry()
{
    QVERIFY(m_stores->entry(filled(), QStringLiteral("bare")).isNull());
}

void TestReading::idsAreStable()
{
    const QString store = filled();
    const auto ids = [&] {
        QStringList all = {m_stores->byName(store)->id()};
        const auto entries = m_stores->entries(store);
        for (const QCA::KeyStoreEntry &entry : entries)
            all.append(entry.id());
        all.sort();
        return all;
    };
    const QStringList before = ids();
    QVERIFY(before.join(QLatin1Char(' ')).contains(QLatin1String("pkcs11:model=SoftHSM%20v2")));
    QCOMPARE(QSet<QString>(before.begin(), before.end()).size(), 4);
    m_stores.reset();
    m_stores = std::make_unique<Stores>();
    QCOMPARE(filled(), store);
    QCOMPARE(ids(), before);
}

void TestReading::lookUps()
{
    const QString store = filled();
    QCA::KeyStoreEntry entry = m_stores->entry(store, QStringLiteral("rsa"));
    QVERIFY(entry.isAvailable());
    QVERIFY(entry.ensureAvailable());
    QVERIFY(entry.ensureAccess());
    QCOMPARE(entry.storeName(), store);
    QCOMPARE(entry.storeId(), m_stores->byName(store)->id());
    QVERIFY(m_stores->byName(store)->holdsIdentities());
    QVERIFY(m_stores->byName(store)->holdsTrustedCertificates());
    QVERIFY(!m_stores->byName(store)->isReadOnly());
}

void TestReading::restoredEntry()
{
    const auto original = m_stores->entry(filled(), QStringLiteral("rsa"));
    const QCA::KeyStoreEntry restored = QCA::KeyStoreEntry::fromString(original.toString());
    QVERIFY(!restored.isNull());
    QCOMPARE(restored.id(), original.id());
    QCOMPARE(restored.name(), original.name());
    QCOMPARE(restored.storeId(), original.storeId());
    QCOMPARE(restored.type(), original.type());
    QCOMPARE(restored.keyBundle().certificateChain().size(), 2);
    QVERIFY(restored.isAvailable());
    for (const char *text :
         {"", "x", "trivex-token-entry-1:::::", "trivex-token-entry-1::::::AA=="})
        QVERIFY(QCA::KeyStoreEntry::fromString(QString::fromLatin1(text)).isNull());
}

void TestReading::sameLabelIsMadeDistinct()
{
    QStringList names = m_stores->names();
    QCOMPARE(names.size(), 2);
    names.sort();
    QCOMPARE(names.first(), QStringLiteral("Reading"));
    QVERIFY(names.last().startsWith(QLatin1String("Reading (")));
}

void TestReading::hotPlug()
{
    const QString store = filled();
    m_token->removeModule();
    QVERIFY(m_stores->waitForEntries(store, 0, 10000));
    // The store stays, with nothing in it.
    QVERIFY(m_stores->byName(store)->isValid());
    QVERIFY(!Trivex::TokenMonitor::token(m_stores->byName(store)->id()).present);
    m_token->restoreModule();
    QVERIFY(m_stores->waitForEntries(store, 3, 10000));
    QCOMPARE(m_stores->names().size(), 2);
}

void TestReading::statusIsPublished()
{
    const QString store = filled();
    const auto status = Trivex::TokenMonitor::token(m_stores->byName(store)->id());
    QCOMPARE(status.name, store);
    QCOMPARE(status.model, QStringLiteral("SoftHSM v2"));
    QVERIFY(!status.serial.isEmpty());
    QVERIFY(status.present && !status.loading && !status.busy && !status.readOnly);
    QCOMPARE(Trivex::TokenMonitor::tokens().size(), 2);
}

QTEST_GUILESS_MAIN(TestReading)
#include "tst_reading.moc"
