// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// The bundle that an exported key is written to, as libcrypto reads it: who finds the file has to
// guess for as long as its maker meant, at each of its three locks.
#include "qca/keys/algorithmparameters.h"
#include "qca/pkcs12/bundlewriter.h"
#include "tests/x509/bundlebuilder.h"

#include <QtCrypto>
#include <QtTest>

using namespace Trivex;
using namespace TrivexTest;

namespace {

/// A tenth of a second on a machine of today. More is welcome.
constexpr qint64 FewestIterations = 100000;

struct FreeSafes {
    void operator()(STACK_OF(PKCS7) * safes) const { sk_PKCS7_pop_free(safes, PKCS7_free); }
};
struct FreeBags {
    void operator()(STACK_OF(PKCS12_SAFEBAG) * bags) const
    {
        sk_PKCS12_SAFEBAG_pop_free(bags, PKCS12_SAFEBAG_free);
    }
};
using Bags = std::unique_ptr<STACK_OF(PKCS12_SAFEBAG), FreeBags>;

template <class Encode, class T> QByteArray encoded(T *object, Encode encode)
{
    unsigned char *data = nullptr;
    const int size = encode(object, &data);
    const QByteArray der(reinterpret_cast<const char *>(data), size);
    OPENSSL_free(data);
    return der;
}

QByteArray derOf(const KeyAndCertificate &pair)
{
    return encoded(pair.certificate.get(), &i2d_X509);
}

Secret privateInfoOf(const KeyAndCertificate &pair)
{
    const Pkcs8Handle info(EVP_PKEY2PKCS8(pair.key.get()));
    return Secret(QCA::SecureArray(encoded(info.get(), &i2d_PKCS8_PRIV_KEY_INFO)));
}

Secret secret(const QByteArray &text)
{
    return Secret(QCA::SecureArray(text));
}

/// How one part of a file is locked.
struct Lock {
    qint64 iterations = 0;
    int cipher = NID_undef;
    int pseudoRandom = NID_undef;
    int saltBytes = 0;
};

Lock lockOf(const X509_ALGOR *algorithm)
{
    Lock lock;
    const auto scheme = parametersOf<Pbes2>(algorithm, ASN1_ITEM_rptr(PBE2PARAM));
    if (kindOf(algorithm) != NID_pbes2 || !scheme)
        return lock;
    const auto function = parametersOf<Pbkdf2>(scheme->keyfunc, ASN1_ITEM_rptr(PBKDF2PARAM));
    if (kindOf(scheme->keyfunc) != NID_id_pbkdf2 || !function)
        return lock;
    lock.cipher = kindOf(scheme->encryption);
    lock.iterations = ASN1_INTEGER_get(function->iter);
    lock.pseudoRandom = function->prf ? kindOf(function->prf) : NID_hmacWithSHA1;
    lock.saltBytes = ASN1_STRING_length(function->salt->value.octet_string);
    return lock;
}

QByteArray idOf(const PKCS12_SAFEBAG *bag)
{
    const ASN1_TYPE *value = PKCS12_SAFEBAG_get0_attr(bag, NID_localKeyID);
    return value ? QByteArray(
               reinterpret_cast<const char *>(ASN1_STRING_get0_data(value->value.octet_string)),
               ASN1_STRING_length(value->value.octet_string))
                 : QByteArray();
}

QString nameOf(const PKCS12_SAFEBAG *bag)
{
    const ASN1_TYPE *value = PKCS12_SAFEBAG_get0_attr(bag, NID_friendlyName);
    if (!value || value->type != V_ASN1_BMPSTRING)
        return {};
    const ASN1_BMPSTRING *units = value->value.bmpstring;
    QString name;
    for (int i = 0; i + 1 < ASN1_STRING_length(units); i += 2)
        name += QChar(ASN1_STRING_get0_data(units)[i + 1], ASN1_STRING_get0_data(units)[i]);
    return name;
}

/// A file as its reader finds it.
struct Opened {
    Opened(const QByteArray &file, const char *password)
    {
        const auto *data = reinterpret_cast<const unsigned char *>(file.constData());
        bundle.reset(d2i_PKCS12(nullptr, &data, file.size()));
        if (!bundle)
            return;
        safes.reset(PKCS12_unpack_authsafes(bundle.get()));
        for (int i = 0; i < sk_PKCS7_num(safes.get()); ++i) {
            PKCS7 *safe = sk_PKCS7_value(safes.get(), i);
            if (PKCS7_type_is_encrypted(safe)) {
                safeLock = lockOf(safe->d.encrypted->enc_data->algorithm);
                certificates.reset(PKCS12_unpack_p7encdata(safe, password, -1));
            } else {
                keys.reset(PKCS12_unpack_p7data(safe));
            }
        }
    }

    Pkcs12Handle bundle;
    std::unique_ptr<STACK_OF(PKCS7), FreeSafes> safes;
    Lock safeLock;
    Bags certificates;
    Bags keys;
};

} // namespace

class TestBundleWriter : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void locks();
    void contents_data();
    void contents();
    void refuses_data();
    void refuses();

private:
    BundleParts parts() const;

    const KeyAndCertificate m_own{"Own"};
    const KeyAndCertificate m_issuer{"Issuer"};
    const KeyAndCertificate m_root{"Root"};
};

BundleParts TestBundleWriter::parts() const
{
    return {QStringLiteral("Мой ключ"),
            privateInfoOf(m_own),
            {derOf(m_own), derOf(m_issuer), derOf(m_root)}};
}

void TestBundleWriter::locks()
{
    const Opened file(writeBundleFile(parts(), secret("secret")), "secret");
    QVERIFY(file.bundle && file.certificates && file.keys);
    // The check of the password.
    const X509_ALGOR *digest = nullptr;
    const ASN1_INTEGER *iterations = nullptr;
    const ASN1_OCTET_STRING *salt = nullptr;
    PKCS12_get0_mac(nullptr, &digest, &salt, &iterations, file.bundle.get());
    QVERIFY(digest && iterations && salt);
    QCOMPARE(kindOf(digest), NID_sha256);
    QVERIFY(ASN1_INTEGER_get(iterations) >= FewestIterations);
    QVERIFY(ASN1_STRING_length(salt) >= 8);
    // The certificates and the key.
    QCOMPARE(sk_PKCS12_SAFEBAG_num(file.keys.get()), 1);
    const PKCS12_SAFEBAG *key = sk_PKCS12_SAFEBAG_value(file.keys.get(), 0);
    QCOMPARE(PKCS12_SAFEBAG_get_nid(key), NID_pkcs8ShroudedKeyBag);
    const X509_ALGOR *algorithm = nullptr;
    X509_SIG_get0(PKCS12_SAFEBAG_get0_pkcs8(key), &algorithm, nullptr);
    for (const Lock &lock : {file.safeLock, lockOf(algorithm)}) {
        QCOMPARE(lock.cipher, NID_aes_256_cbc);
        QCOMPARE(lock.pseudoRandom, NID_hmacWithSHA256);
        QVERIFY2(lock.iterations >= FewestIterations, qPrintable(QString::number(lock.iterations)));
        QVERIFY(lock.saltBytes >= 8);
    }
}

void TestBundleWriter::contents_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("password");
    QTest::newRow("named") << QStringLiteral("Мой ключ") << QByteArray("secret");
    QTest::newRow("without a name") << QString() << QByteArray("secret");
    QTest::newRow("beyond ASCII") << QStringLiteral("🔑 №") << QByteArray("пароль");
    QTest::newRow("one letter") << QStringLiteral("a") << QByteArray("x");
}

void TestBundleWriter::contents()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, password);
    BundleParts written = parts();
    written.name = name;
    const Opened file(writeBundleFile(written, secret(password)), password.constData());
    QVERIFY(file.bundle && file.certificates && file.keys);
    QCOMPARE(PKCS12_verify_mac(file.bundle.get(), password.constData(), password.size()), 1);
    QCOMPARE(PKCS12_verify_mac(file.bundle.get(), password.constData(), password.size() - 1), 0);
    QCOMPARE(sk_PKCS12_SAFEBAG_num(file.keys.get()), 1);
    PKCS12_SAFEBAG *key = sk_PKCS12_SAFEBAG_value(file.keys.get(), 0);
    const Pkcs8Handle info(PKCS12_decrypt_skey(key, password.constData(), password.size()));
    QVERIFY(info);
    const PKeyHandle opened(EVP_PKCS82PKEY(info.get()));
    QCOMPARE(EVP_PKEY_eq(opened.get(), m_own.key.get()), 1);
    QCOMPARE(nameOf(key), name);
    QCOMPARE(sk_PKCS12_SAFEBAG_num(file.certificates.get()), written.chain.size());
    for (int i = 0; i < written.chain.size(); ++i) {
        PKCS12_SAFEBAG *bag = sk_PKCS12_SAFEBAG_value(file.certificates.get(), i);
        const X509Handle certificate(PKCS12_SAFEBAG_get1_cert(bag));
        QCOMPARE(encoded(certificate.get(), &i2d_X509), written.chain.at(i));
        // The name and the key are the first one's.
        QCOMPARE(nameOf(bag), i == 0 ? name : QString());
        QCOMPARE(idOf(bag), i == 0 ? idOf(key) : QByteArray());
    }
    QCOMPARE(idOf(key), QCryptographicHash::hash(written.chain.first(), QCryptographicHash::Sha1));
}

void TestBundleWriter::refuses_data()
{
    QTest::addColumn<QByteArray>("password");
    QTest::addColumn<int>("damaged"); // a certificate of the chain; -1 for none, -2 for the key
    QTest::addColumn<bool>("hasChain");
    QTest::newRow("no password") << QByteArray() << -1 << true;
    QTest::newRow("a zero in it") << QByteArray("sec\0ret", 7) << -1 << true;
    QTest::newRow("a zero at its begin") << QByteArray("\0secret", 7) << -1 << true;
    QTest::newRow("a zero at its end") << QByteArray("secret\0", 7) << -1 << true;
    QTest::newRow("no certificate") << QByteArray("secret") << -1 << false;
    QTest::newRow("its certificate") << QByteArray("secret") << 0 << true;
    QTest::newRow("an issuer") << QByteArray("secret") << 1 << true;
    QTest::newRow("the last issuer") << QByteArray("secret") << 2 << true;
    QTest::newRow("the key") << QByteArray("secret") << -2 << true;
}

// No half of a file.
void TestBundleWriter::refuses()
{
    QFETCH(QByteArray, password);
    QFETCH(int, damaged);
    QFETCH(bool, hasChain);
    BundleParts given = parts();
    QVERIFY(!writeBundleFile(given, secret("secret")).isEmpty());
    if (!hasChain)
        given.chain.clear();
    if (damaged >= 0)
        given.chain[damaged].chop(1);
    if (damaged == -2)
        given.privateInfo = secret("no key");
    QVERIFY(writeBundleFile(given, secret(password)).isEmpty());
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QCA::Initializer initializer;
    TestBundleWriter test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_bundlewriter.moc"
