// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Keys of odd numbers and of algorithms that few know, in certificates, requests, key files and
// bundles: shown for what they are, never taken for good, and never the end of the process.
#include "qca/adapter/entries.h"
#include "qca/adapter/reading.h"
#include "qca/asn1/handles.h"
#include "qca/asn1/pem.h"
#include "qca/base/providers.h"
#include "qca/keys/keys.h"
#include "qca/x509/certificateinfo.h"
#include "tests/x509/builtcertificate.h"
#include "tests/x509/corpus.h"
#include "tests/x509/oddkeys.h"
#include "tests/x509/propertycomparison.h"
#include "tests/x509/requestsubject.h"

#include <QtTest>

#include <openssl/pkcs12.h>
#include <openssl/x509.h>

using namespace Trivex;
using namespace TrivexTest;

namespace {

const QByteArray Message = "message";

QCA::Certificate decoded(const QByteArray &der)
{
    return QCA::Certificate::fromDER(der, nullptr, opensslProviderName());
}

/// A certificate that names itself as its issuer, with a signature that is none.
Parts partsWith(const QByteArray &publicInfo)
{
    Parts parts;
    parts.subject = parts.issuer;
    parts.key = publicInfo;
    return parts;
}

/// `certificate` with the signature that `forgery` makes of its body.
QByteArray forged(const Forgery &forgery, Parts parts, const QByteArray &serial)
{
    parts.algorithm = forgery.algorithm;
    parts.serial = serial;
    const QByteArray whole = certificate(parts);
    // The body begins behind the header of four octets of length.
    const QByteArray tail =
        forgery.algorithm + derElement(0x03, hex("00") + QByteArrayLiteral("signature"));
    const QByteArray body = whole.mid(6, whole.size() - 6 - tail.size());
    return derElement(0x30,
                      body + forgery.algorithm + derElement(0x03, hex("00") + forgery.sign(body)));
}

bool isGoodForLibcrypto(const QByteArray &issued, const QByteArray &publicInfo)
{
    const auto *data = reinterpret_cast<const unsigned char *>(issued.constData());
    const X509Handle native(d2i_X509(nullptr, &data, issued.size()));
    data = reinterpret_cast<const unsigned char *>(publicInfo.constData());
    const PKeyHandle key(d2i_PUBKEY(nullptr, &data, publicInfo.size()));
    return native && key && X509_verify(native.get(), key.get()) == 1;
}

void useDomain(const QCA::DLGroup &domain)
{
    // QCA asks to look first.
    if (!domain.isNull())
        static_cast<void>(domain.p().toArray());
}

/// All that a program may ask of a public key.
void use(const QCA::PublicKey &key)
{
    QVERIFY(!key.isNull());
    QVERIFY(!key.isPrivate());
    QVERIFY(key.bitSize() >= 0);
    QVERIFY(key.canVerify() || !key.canVerify());
    static_cast<void>(key.maximumEncryptSize(QCA::EME_PKCS1v15));
    QCOMPARE(QCA::PublicKey(key).toPEM().isEmpty(), false);
    for (const auto algorithm :
         {QCA::EMSA1_SHA1, QCA::EMSA3_SHA256, QCA::EMSA3_Raw, QCA::SignatureUnknown}) {
        for (const int size : {0, 1, 64, 114, 256, 2048})
            QVERIFY(!QCA::PublicKey(key).verifyMessage(Message, QByteArray(size, '\0'), algorithm));
    }
    if (keyType(key) == RsaKey) {
        for (const auto padding : {QCA::EME_PKCS1v15, QCA::EME_PKCS1_OAEP, QCA::EME_NO_PADDING})
            static_cast<void>(key.toRSA().encrypt(QCA::SecureArray("x"), padding));
        static_cast<void>(key.toRSA().n().toArray());
    }
    if (keyType(key) == DsaKey)
        useDomain(key.toDSA().domain());
    if (keyType(key) == DhKey)
        useDomain(key.toDH().domain());
}

QByteArray request(const QByteArray &publicInfo)
{
    const QByteArray algorithm = derElement(0x30, oidElement(hex("2a864886f70d01010b")));
    return derElement(0x30,
                      derElement(0x30,
                                 derElement(0x02, hex("00")) + commonName("Subject") + publicInfo
                                     + derElement(0xa0, {}))
                          + algorithm
                          + derElement(0x03, hex("00") + QByteArrayLiteral("signature")));
}

QByteArray bundle(const OddPair &pair, const QByteArray &certificate)
{
    const auto *data = reinterpret_cast<const unsigned char *>(pair.privateInfo.constData());
    PKCS8_PRIV_KEY_INFO *key = d2i_PKCS8_PRIV_KEY_INFO(nullptr, &data, pair.privateInfo.size());
    data = reinterpret_cast<const unsigned char *>(certificate.constData());
    const X509Handle native(d2i_X509(nullptr, &data, certificate.size()));
    STACK_OF(PKCS12_SAFEBAG) *bags = sk_PKCS12_SAFEBAG_new_null();
    sk_PKCS12_SAFEBAG_push(bags, PKCS12_SAFEBAG_create0_p8inf(key));
    PKCS12_add_cert(&bags, native.get());
    // Where nothing else tells whose key it is.
    unsigned char id = 1;
    for (int i = 0; i < sk_PKCS12_SAFEBAG_num(bags); ++i)
        PKCS12_add_localkeyid(sk_PKCS12_SAFEBAG_value(bags, i), &id, 1);
    STACK_OF(PKCS7) *safes = nullptr;
    PKCS12_add_safe(&safes, bags, -1, 1, nullptr);
    sk_PKCS12_SAFEBAG_pop_free(bags, PKCS12_SAFEBAG_free);
    const Pkcs12Handle made(PKCS12_add_safes(safes, 0));
    sk_PKCS7_pop_free(safes, PKCS7_free);
    PKCS12_set_mac(made.get(), "secret", -1, nullptr, 0, 1, EVP_sha256());
    unsigned char *out = nullptr;
    const int size = i2d_PKCS12(made.get(), &out);
    const QByteArray der(reinterpret_cast<const char *>(out), size);
    OPENSSL_free(out);
    return der;
}

template <class Key, class List> const Key &keyOfRow(const List &keys)
{
    return *std::find_if(keys.cbegin(), keys.cend(), [](const Key &key) {
        return qstrcmp(key.name, QTest::currentDataTag()) == 0;
    });
}

template <class List> void addRows(const List &keys)
{
    QTest::addColumn<bool>("isRow");
    for (const auto &key : keys)
        QTest::newRow(key.name) << true;
}

} // namespace

class TestOddKeys : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void certificates_data() { addRows(m_publicKeys); }
    void certificates();
    void requests_data() { addRows(m_publicKeys); }
    void requests();
    void forgedSignatures_data() { addRows(m_forgeries); }
    void forgedSignatures();
    void keyFiles_data() { addRows(m_privateKeys); }
    void keyFiles();
    void bundles_data() { addRows(m_pairs); }
    void bundles();

private:
    QCA::Initializer m_initializer;
    const QList<OddKey> m_publicKeys = oddPublicKeys();
    const QList<Forgery> m_forgeries = forgeries();
    const QList<OddPrivateKey> m_privateKeys = oddPrivateKeys();
    const QList<OddPair> m_pairs = oddPairs();
};

void TestOddKeys::certificates()
{
    const OddKey &odd = keyOfRow<OddKey>(m_publicKeys);
    const QByteArray der = certificate(partsWith(odd.publicInfo));
    const QCA::Certificate certificate = decoded(der);
    QVERIFY(!certificate.isNull());
    QCOMPARE(certificate.toDER(), der);
    QVERIFY(!certificate.isSelfSigned());
    QVERIFY(!certificate.isIssuerOf(certificate));
    const QCA::PublicKey key = certificate.subjectPublicKey();
    QCOMPARE(keyType(key), odd.type);
    QCOMPARE(encodedPublicKey(key), odd.publicInfo);
    QVERIFY(isSamePublicKey(key, decoded(der).subjectPublicKey()));
    use(key);
    if (QTest::currentTestFailed())
        return;
    const QVariantMap shown = propertiesOf(certificate);
    QCOMPARE(shown.value(QStringLiteral("publicKeyTypeAlgorithm")).toString(),
             QString::fromLatin1(odd.text));
    QCOMPARE(shown.value(QStringLiteral("commonName")).toString(), QStringLiteral("Issuer"));
    QCOMPARE(shown.value(QStringLiteral("isRoot")).toBool(), false);
}

void TestOddKeys::requests()
{
    const OddKey &odd = keyOfRow<OddKey>(m_publicKeys);
    const QByteArray der = request(odd.publicInfo);
    const QCA::CertificateRequest read = requestFromPem(writePem("CERTIFICATE REQUEST", der));
    QVERIFY(!read.isNull());
    QCOMPARE(read.toDER(), der);
    QCOMPARE(requestSubject(read).value(QCA::CommonName), QStringLiteral("Subject"));
    QCOMPARE(keyType(requestPublicKey(read)), odd.type);
    QCOMPARE(encodedPublicKey(requestPublicKey(read)), odd.publicInfo);
    use(requestPublicKey(read));
}

// Signatures that everybody can make say nothing about who made them.
void TestOddKeys::forgedSignatures()
{
    const Forgery &forgery = keyOfRow<Forgery>(m_forgeries);
    Parts authority = partsWith(forgery.publicInfo);
    // For libcrypto nothing else is wrong with it.
    authority.extensions =
        extension(hex("551d13"), derElement(0x30, derElement(0x01, hex("ff"))), true);
    QByteArray root;
    // Some forgers have to try several bodies.
    for (char serial = 1; serial < 100 && !isGoodForLibcrypto(root, forgery.publicInfo); ++serial)
        root = forged(forgery, authority, QByteArray(1, serial));
    QVERIFY2(isGoodForLibcrypto(root, forgery.publicInfo), "the forgery is none");
    const QCA::Certificate issuer = decoded(root);
    QVERIFY(!issuer.isSelfSigned());
    QCOMPARE(propertiesOf(issuer).value(QStringLiteral("isRoot")).toBool(), false);
    QVERIFY(!issuer.subjectPublicKey().verifyMessage(Message, forgery.sign(Message),
                                                     QCA::EMSA3_SHA256));
    QByteArray leaf;
    for (char serial = 1; serial < 100 && !isGoodForLibcrypto(leaf, forgery.publicInfo); ++serial) {
        Parts parts;
        parts.key = forgery.publicInfo;
        leaf = forged(forgery, parts, QByteArray(1, serial));
    }
    QVERIFY(isGoodForLibcrypto(leaf, forgery.publicInfo));
    QCA::CertificateCollection trusted;
    trusted.addCertificate(issuer);
    QVERIFY(decoded(leaf).validate(trusted, {}) != QCA::ValidityGood);
    // Here nobody but libcrypto looks for the issuer.
    QVERIFY(QCA::CertificateChain(decoded(leaf)).validate(trusted) != QCA::ValidityGood);
}

// Work and memory are known before they are spent.
void TestOddKeys::keyFiles()
{
    const OddPrivateKey &odd = keyOfRow<OddPrivateKey>(m_privateKeys);
    QCA::ConvertResult result = QCA::ErrorFile;
    const QCA::PrivateKey key =
        QCA::PrivateKey::fromDER(odd.privateInfo, {}, &result, opensslProviderName());
    QCOMPARE(!key.isNull(), odd.isReadable);
    QCOMPARE(int(result), int(odd.isReadable ? QCA::ConvertGood : QCA::ErrorDecode));
    const QString pem = QString::fromLatin1(writePem("PRIVATE KEY", odd.privateInfo));
    QCOMPARE(!QCA::PrivateKey::fromPEM(pem, {}, nullptr, opensslProviderName()).isNull(),
             odd.isReadable);
}

void TestOddKeys::bundles()
{
    const OddPair &pair = keyOfRow<OddPair>(m_pairs);
    QVERIFY(!pair.privateInfo.isEmpty() && !pair.publicInfo.isEmpty());
    const QByteArray own = shortest(certificate(partsWith(pair.publicInfo)));
    QCA::ConvertResult result = QCA::ErrorFile;
    const QCA::KeyBundle read = QCA::KeyBundle::fromArray(
        bundle(pair, own), QCA::SecureArray("secret"), &result, opensslProviderName());
    QCOMPARE(int(result), int(QCA::ConvertGood));
    QCOMPARE(read.certificateChain().primary().toDER(), own);
    QCA::PrivateKey key = read.privateKey();
    QCOMPARE(keyType(key), pair.type);
    QVERIFY(isPrivateKey(key));
    QCOMPARE(encodedPublicKey(publicKeyOf(key)), pair.publicInfo);
    QVERIFY(
        isSamePublicKey(publicKeyOf(key), read.certificateChain().primary().subjectPublicKey()));
    for (const auto algorithm : {QCA::EMSA1_SHA1, QCA::EMSA3_SHA256, QCA::EMSA3_SHA512,
                                 QCA::EMSA3_Raw, QCA::SignatureUnknown}) {
        const QByteArray signature = key.signMessage(Message, algorithm);
        // What was signed at all can be checked.
        QCOMPARE(publicKeyOf(key).verifyMessage(Message, signature, algorithm),
                 !signature.isEmpty());
    }
    if (pair.type == RsaKey || pair.type == DsaKey)
        QVERIFY(!key.signMessage(Message, QCA::EMSA1_SHA1).isEmpty());
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestOddKeys test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_oddkeys.moc"
