// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/keystoreentry.h"
#include "certificates/securemessagekey.h"
#include "certificates/securemessagesignature.h"
#include "qca/base/providers.h"
#include "tests/certificates/certificatefactory.h"
#include "tests/fakes/provider/fakeprovider.h"

#include <QPointer>
#include <QtTest>

using TrivexTest::CertificateFactory;
using TrivexTest::FakeEntry;
using TrivexTest::FakeProvider;

/// What carries QCA's entries and secure messages into QML.
class TestEntries : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void emptyEntry();
    void certificateEntry();
    void bundleEntry();
    void bundleWithoutChain_data();
    void bundleWithoutChain();
    void otherEntries_data();
    void otherEntries();
    void certificateGoesWithItsEntry();
    void messageKey();
    void messageSignature();

private:
    QCA::KeyStoreEntry entry(const FakeEntry &fake);

    QCA::Initializer m_qca;
    CertificateFactory m_factory;
    FakeProvider *m_fake = nullptr;
};

void TestEntries::initTestCase()
{
    QVERIFY2(m_factory.isValid(), "the openssl program is needed");
    Trivex::rankProviders();
    m_fake = FakeProvider::install(QStringLiteral("fake"), {QStringLiteral("keystorelist")});
    QVERIFY(m_fake);
}

QCA::KeyStoreEntry TestEntries::entry(const FakeEntry &fake)
{
    std::unique_ptr<QCA::Provider::Context> context(
        m_fake->createContext(QStringLiteral("keystorelist")));
    auto *list = static_cast<QCA::KeyStoreListContext *>(context.get());
    m_fake->stores->reset();
    m_fake->stores->addStore(
        {QStringLiteral("id"), QStringLiteral("Store"), QCA::KeyStore::SmartCard, {fake}});
    QCA::KeyStoreEntry wrapped;
    wrapped.change(list->entryList(list->keyStores().first()).first());
    return wrapped;
}

void TestEntries::certificateEntry()
{
    const QCA::Certificate certificate = m_factory.selfSigned(QStringLiteral("/CN=Alone"));
    const KeyStoreEntry object(entry({QCA::KeyStoreEntry::TypeCertificate,
                                      QStringLiteral("i"),
                                      QStringLiteral("Shown"),
                                      certificate,
                                      {}}));
    QCOMPARE(object.name(), QStringLiteral("Shown"));
    QCOMPARE(object.data()->id(), QStringLiteral("i"));
    QCOMPARE(object.certificate()->certificate(), certificate);
    QVERIFY(object.certificate()->keyBundle().isNull());
    QCOMPARE(object.certificate()->privateKeyLocation(), QString());
}

void TestEntries::bundleEntry()
{
    const QCA::KeyBundle bundle = m_factory.bundle(QStringLiteral("/CN=Keyed/O=Maker"));
    QVERIFY(!bundle.isNull());
    const KeyStoreEntry object(entry({QCA::KeyStoreEntry::TypeKeyBundle,
                                      QStringLiteral("i"),
                                      QStringLiteral("Shown"),
                                      {},
                                      bundle}));
    const Certificate *certificate = object.certificate();
    QCOMPARE(certificate->certificate(), bundle.certificateChain().first());
    QVERIFY(!certificate->keyBundle().isNull());
    QCOMPARE(certificate->privateKeyAvailability(),
             QStringLiteral("trivex-p-la-private_available"));
    QCOMPARE(certificate->privateKeyManufacturer(), QStringLiteral("Maker"));
}

void TestEntries::bundleWithoutChain_data()
{
    QTest::addColumn<bool>("withKey");
    QTest::newRow("null bundle") << false;
    QTest::newRow("key without certificates") << true;
}

void TestEntries::bundleWithoutChain()
{
    QFETCH(bool, withKey);
    QCA::KeyBundle bundle;
    if (withKey) {
        bundle = m_factory.bundle(QStringLiteral("/CN=Keyed"));
        bundle.setCertificateChainAndKey(QCA::CertificateChain(), bundle.privateKey());
        QVERIFY(bundle.certificateChain().isEmpty());
    }
    const KeyStoreEntry object(entry({QCA::KeyStoreEntry::TypeKeyBundle,
                                      QStringLiteral("i"),
                                      QStringLiteral("Shown"),
                                      {},
                                      bundle}));
    QVERIFY(object.certificate());
    QVERIFY(object.certificate()->isNull());
    QCOMPARE(object.certificate()->commonName(), QString());
}

void TestEntries::otherEntries_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("list of revoked certificates") << int(QCA::KeyStoreEntry::TypeCRL);
    QTest::newRow("secret PGP key") << int(QCA::KeyStoreEntry::TypePGPSecretKey);
    QTest::newRow("public PGP key") << int(QCA::KeyStoreEntry::TypePGPPublicKey);
}

void TestEntries::otherEntries()
{
    QFETCH(int, type);
    // What the provider would answer for other types is not asked for.
    const KeyStoreEntry object(entry({QCA::KeyStoreEntry::Type(type),
                                      QStringLiteral("i"),
                                      QStringLiteral("Shown"),
                                      m_factory.selfSigned(QStringLiteral("/CN=No")),
                                      {}}));
    QCOMPARE(object.name(), QStringLiteral("Shown"));
    QVERIFY(object.certificate());
    QVERIFY(object.certificate()->isNull());
}

void TestEntries::certificateGoesWithItsEntry()
{
    auto object = std::make_unique<KeyStoreEntry>(QCA::KeyStoreEntry());
    const QPointer<Certificate> certificate(object->certificate());
    QVERIFY(certificate);
    QVERIFY(!certificate->parent());
    object.reset();
    QVERIFY(!certificate);
}

void TestEntries::emptyEntry()
{
    KeyStoreEntry none;
    QCOMPARE(none.certificate(), nullptr);
    QCOMPARE(none.name(), QString());
    QVERIFY(none.data());
    KeyStoreEntry empty{QCA::KeyStoreEntry()};
    QVERIFY(empty.certificate());
    QVERIFY(empty.certificate()->isNull());
    QCOMPARE(empty.certificate(), empty.certificate());
    const int type = qRegisterMetaType<QCA_KeyStoreEntry *>("QCA_KeyStoreEntry*");
    const QVariant data = empty.property("data");
    QCOMPARE(data.userType(), type);
    QCOMPARE(QMetaType::type("QCA_KeyStoreEntry*"), type);
    QCOMPARE(data.value<QCA::KeyStoreEntry *>(), empty.data());
}

void TestEntries::messageKey()
{
    SecureMessageKey none;
    QVERIFY(none.x509CertificateChain().isEmpty());
    QCOMPARE(none.x509Certificate(), nullptr);
    QCA::SecureMessageKey wrapped;
    QCA::CertificateChain wrappedChain;
    wrappedChain << m_factory.selfSigned(QStringLiteral("/CN=First"))
                 << m_factory.selfSigned(QStringLiteral("/CN=Second"));
    wrapped.setX509CertificateChain(wrappedChain);
    SecureMessageKey key(wrapped);
    Certificate *first = key.x509Certificate();
    QVERIFY(first);
    QCOMPARE(first->commonName(), QStringLiteral("First"));
    QCOMPARE(first->parent(), &key);
    const QList<Certificate *> chain = key.x509CertificateChain();
    QCOMPARE(chain.size(), 2);
    QCOMPARE(chain.first(), first);
    QCOMPARE(key.x509CertificateChain(), chain);
}

void TestEntries::messageSignature()
{
    SecureMessageSignature none;
    QVERIFY(none.children().isEmpty()); // made at the first read
    SecureMessageKey *key = none.key();
    QVERIFY(key);
    QCOMPARE(none.key(), key);
    QCOMPARE(key->parent(), &none);
    QCA::SecureMessageKey signer;
    QCA::CertificateChain signerChain;
    signerChain << m_factory.selfSigned(QStringLiteral("/CN=Signer"));
    signer.setX509CertificateChain(signerChain);
    SecureMessageSignature signature(
        QCA::SecureMessageSignature(QCA::SecureMessageSignature::InvalidKey, QCA::ErrorExpired,
                                    signer, QDateTime::currentDateTime()));
    QVERIFY(signature.findChild<SecureMessageKey *>()); // at once
    QCOMPARE(signature.identityResult(), int(SecureMessageSignature::InvalidKey));
    QCOMPARE(signature.key()->x509Certificate()->commonName(), QStringLiteral("Signer"));
}

QTEST_GUILESS_MAIN(TestEntries)
#include "tst_entries.moc"
