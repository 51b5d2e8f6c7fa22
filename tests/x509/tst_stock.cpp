// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/asn1/handles.h"
#include "qca/base/providers.h"
#include "qca/x509/makecertificate.h"
#include "tests/x509/corpus.h"

#include <QtTest>

using namespace Trivex;

/// Stock QCA's TLS and CMS take native objects out of foreign contexts by their layout. They must
/// find what they look for in ours.
class TestStock : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void hasNativeObjectsFirst();
    void signsMessages();
    void connectsSecurely();

private:
    QCA::Initializer m_initializer;
    QCA::KeyBundle m_bundle;
    QCA::CertificateCollection m_trusted;
};

namespace {

// The first data member behind the base class.
template <class Base> void *firstMember(const QCA::Provider::Context *context)
{
    const char *address = reinterpret_cast<const char *>(static_cast<const Base *>(context));
    return *reinterpret_cast<void *const *>(address + sizeof(Base));
}

void pump(QCA::TLS &from, QCA::TLS &to)
{
    const QByteArray data = from.readOutgoing();
    if (!data.isEmpty())
        to.writeIncoming(data);
}

} // namespace

void TestStock::initTestCase()
{
    QCA::ConvertResult result;
    m_bundle = QCA::KeyBundle::fromFile(Corpus::path(QStringLiteral("bundle-aes.p12")),
                                        QCA::SecureArray("secret"), &result, opensslProviderName());
    QCOMPARE(int(result), int(QCA::ConvertGood));
    m_trusted.addCertificate(Corpus::certificate(QStringLiteral("extensions.der")));
}

void TestStock::hasNativeObjectsFirst()
{
    const QByteArray der = Corpus::read(QStringLiteral("identifiers.der"));
    const QCA::Certificate certificate = QCA::Certificate::fromDER(der);
    auto *native = static_cast<X509 *>(firstMember<QCA::CertContext>(certificate.context()));
    QVERIFY(native);
    unsigned char *encoded = nullptr;
    const int size = i2d_X509(native, &encoded);
    QCOMPARE(QByteArray(reinterpret_cast<char *>(encoded), size), der);
    OPENSSL_free(encoded);

    const QCA::PrivateKey key = m_bundle.privateKey();
    auto *base = static_cast<QCA::PKeyBase *>(firstMember<QCA::PKeyContext>(key.context()));
    QCOMPARE(base, static_cast<const QCA::PKeyContext *>(key.context())->key());
    auto *nativeKey = static_cast<EVP_PKEY *>(firstMember<QCA::RSAContext>(base));
    QCOMPARE(EVP_PKEY_get_bits(nativeKey), 2048);
    // Certificates of large lists have none.
    QVERIFY(!firstMember<QCA::CertContext>(makeCertificate(der).context()));
}

void TestStock::signsMessages()
{
    const QString stock = QStringLiteral("qca-ossl");
    if (!QCA::isSupported("cms", stock))
        QSKIP("no stock CMS");
    const QByteArray text = "signed text";
    QCA::CMS cms(nullptr, stock);
    cms.setTrustedCertificates(m_trusted);
    QCA::SecureMessageKey key;
    key.setX509CertificateChain(m_bundle.certificateChain());
    key.setX509PrivateKey(m_bundle.privateKey());
    QCA::SecureMessage signer(&cms);
    signer.setSigner(key);
    signer.setBundleSignerEnabled(true);
    signer.startSign(QCA::SecureMessage::Detached);
    signer.update(text);
    signer.end();
    signer.waitForFinished(-1);
    QVERIFY(signer.success());

    for (const QByteArray &read : {text, QByteArray("other text")}) {
        QCA::SecureMessage verifier(&cms);
        verifier.startVerify(signer.signature());
        verifier.update(read);
        verifier.end();
        verifier.waitForFinished(-1);
        QCOMPARE(verifier.verifySuccess(), read == text);
    }
}

void TestStock::connectsSecurely()
{
    if (!QCA::isSupported("tls"))
        QSKIP("no stock TLS");
    QCA::TLS client;
    QCA::TLS server;
    client.setTrustedCertificates(m_trusted);
    server.setCertificate(m_bundle.certificateChain(), m_bundle.privateKey());
    connect(&server, &QCA::TLS::readyReadOutgoing, &server, [&] { pump(server, client); });
    // The server gets the first flight only: QCA 2.3 crashes at the end of a handshake in which
    // the client has no certificate, with any provider's. By then it has sent its own and signed.
    bool greeted = false;
    connect(&client, &QCA::TLS::readyReadOutgoing, &client, [&] {
        if (!greeted)
            pump(client, server);
        greeted = true;
    });
    connect(&client, &QCA::TLS::handshaken, &client, &QCA::TLS::continueAfterStep);
    server.startServer();
    client.startClient();
    QTRY_VERIFY(client.isHandshaken());
    QCOMPARE(int(client.peerIdentityResult()), int(QCA::TLS::Valid));
    QCOMPARE(client.peerCertificateChain().primary().toDER(),
             m_bundle.certificateChain().primary().toDER());
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestStock test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_stock.moc"
