// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Validity over time: of a certificate, of its issuer and of the lists that may revoke it.
#include "qca/asn1/handles.h"
#include "qca/base/providers.h"
#include "tests/x509/corpus.h"

#include <QtTest>

#include <openssl/ec.h>
#include <openssl/x509v3.h>

using namespace Trivex;

namespace {

constexpr long Day = 24 * 3600; // seconds

/// From so many seconds from now on to so many.
struct Span {
    long from;
    long to;
};

constexpr Span Now{-Day, Day};
constexpr Span Past{-2 * Day, -Day};
constexpr Span Future{Day, 2 * Day};

void setName(X509_NAME *name, const char *text)
{
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8,
                               reinterpret_cast<const unsigned char *>(text), -1, -1, 0);
}

template <class Encode, class T> QByteArray encoded(const T *object, Encode encode)
{
    unsigned char *data = nullptr;
    const int size = encode(object, &data);
    const QByteArray der(reinterpret_cast<const char *>(data), size);
    OPENSSL_free(data);
    return der;
}

void addExtension(X509 *certificate, int kind, const char *value)
{
    const Handle<X509_EXTENSION, X509_EXTENSION_free> extension(
        X509V3_EXT_conf_nid(nullptr, nullptr, kind, value));
    X509_add_ext(certificate, extension.get(), -1);
}

/// What only some certificates have.
struct Particulars {
    const char *issuer = "Authority";
    bool isAuthority = false; ///< though another one has issued it
    const char *purposes = nullptr; ///< as OpenSSL writes them
};

QCA::Certificate issued(const char *subject, EVP_PKEY *key, EVP_PKEY *issuerKey, Span span,
                        const Particulars &particulars = {})
{
    const X509Handle made(X509_new());
    X509_set_version(made.get(), 2);
    ASN1_INTEGER_set(X509_get_serialNumber(made.get()), 7);
    X509_gmtime_adj(X509_getm_notBefore(made.get()), span.from);
    X509_gmtime_adj(X509_getm_notAfter(made.get()), span.to);
    setName(X509_get_subject_name(made.get()), subject);
    setName(X509_get_issuer_name(made.get()), particulars.issuer);
    X509_set_pubkey(made.get(), key);
    if (key == issuerKey || particulars.isAuthority)
        addExtension(made.get(), NID_basic_constraints, "critical,CA:TRUE");
    if (particulars.purposes)
        addExtension(made.get(), NID_ext_key_usage, particulars.purposes);
    X509_sign(made.get(), issuerKey, EVP_sha256());
    return QCA::Certificate::fromDER(encoded(made.get(), &i2d_X509), nullptr,
                                     opensslProviderName());
}

QCA::CRL listOf(EVP_PKEY *issuerKey, Span span, bool isRevoked)
{
    const CrlHandle made(X509_CRL_new());
    const Handle<X509_NAME, X509_NAME_free> issuer(X509_NAME_new());
    setName(issuer.get(), "Authority");
    X509_CRL_set_version(made.get(), 1);
    X509_CRL_set_issuer_name(made.get(), issuer.get());
    const Handle<ASN1_TIME, ASN1_TIME_free> from(X509_gmtime_adj(nullptr, span.from));
    const Handle<ASN1_TIME, ASN1_TIME_free> to(X509_gmtime_adj(nullptr, span.to));
    X509_CRL_set1_lastUpdate(made.get(), from.get());
    X509_CRL_set1_nextUpdate(made.get(), to.get());
    if (isRevoked) {
        X509_REVOKED *one = X509_REVOKED_new();
        const Handle<ASN1_INTEGER, ASN1_INTEGER_free> serial(ASN1_INTEGER_new());
        ASN1_INTEGER_set(serial.get(), 7);
        X509_REVOKED_set_serialNumber(one, serial.get());
        X509_REVOKED_set_revocationDate(one, from.get());
        X509_CRL_add0_revoked(made.get(), one);
    }
    X509_CRL_sort(made.get());
    X509_CRL_sign(made.get(), issuerKey, EVP_sha256());
    return QCA::CRL::fromDER(encoded(made.get(), &i2d_X509_CRL), nullptr, opensslProviderName());
}

} // namespace

Q_DECLARE_METATYPE(Span)

class TestValidation : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void dates_data();
    void dates();
    void lists_data();
    void lists();
    void revokedAuthority();
    void usages_data();
    void usages();
    void chains();

private:
    QCA::Initializer m_initializer;
    const PKeyHandle m_authorityKey{EVP_EC_gen("P-256")};
    const PKeyHandle m_middleKey{EVP_EC_gen("P-256")};
    const PKeyHandle m_key{EVP_EC_gen("P-256")};
};

void TestValidation::dates_data()
{
    QTest::addColumn<Span>("own");
    QTest::addColumn<Span>("authority");
    QTest::addColumn<int>("expected");
    QTest::newRow("both now") << Now << Now << int(QCA::ValidityGood);
    QTest::newRow("expired") << Past << Now << int(QCA::ErrorExpired);
    QTest::newRow("not yet") << Future << Now << int(QCA::ErrorExpired);
    QTest::newRow("authority expired") << Now << Past << int(QCA::ErrorExpiredCA);
    QTest::newRow("authority not yet") << Now << Future << int(QCA::ErrorExpiredCA);
}

void TestValidation::dates()
{
    QFETCH(Span, own);
    QFETCH(Span, authority);
    QFETCH(int, expected);
    QCA::CertificateCollection trusted;
    trusted.addCertificate(
        issued("Authority", m_authorityKey.get(), m_authorityKey.get(), authority));
    const QCA::Certificate leaf = issued("Own", m_key.get(), m_authorityKey.get(), own);
    QCOMPARE(int(leaf.validate(trusted, {})), expected);
}

void TestValidation::lists_data()
{
    QTest::addColumn<Span>("span");
    QTest::addColumn<bool>("isRevoked");
    for (const bool isRevoked : {false, true}) {
        const char *const text = isRevoked ? "with it" : "without it";
        QTest::addRow("of now, %s", text) << Now << isRevoked;
        QTest::addRow("expired, %s", text) << Past << isRevoked;
        QTest::addRow("of the future, %s", text) << Future << isRevoked;
    }
}

// What is revoked stays revoked, and a list that has gone stale is no fault of the certificate.
void TestValidation::lists()
{
    QFETCH(Span, span);
    QFETCH(bool, isRevoked);
    QCA::CertificateCollection trusted;
    trusted.addCertificate(issued("Authority", m_authorityKey.get(), m_authorityKey.get(), Now));
    QCA::CertificateCollection lists;
    const QCA::CRL list = listOf(m_authorityKey.get(), span, isRevoked);
    QVERIFY(!list.isNull());
    lists.addCRL(list);
    const QCA::Certificate leaf = issued("Own", m_key.get(), m_authorityKey.get(), Now);
    QCOMPARE(int(leaf.validate(trusted, lists)),
             int(isRevoked ? QCA::ErrorRevoked : QCA::ValidityGood));
}

// Between the certificate and the root: its issuer is revoked, and of its own issuer there is no
// list.
void TestValidation::revokedAuthority()
{
    QCA::CertificateCollection trusted;
    trusted.addCertificate(issued("Authority", m_authorityKey.get(), m_authorityKey.get(), Now));
    Particulars particulars;
    particulars.isAuthority = true;
    QCA::CertificateCollection others;
    others.addCertificate(
        issued("Middle", m_middleKey.get(), m_authorityKey.get(), Now, particulars));
    Particulars own;
    own.issuer = "Middle";
    const QCA::Certificate leaf = issued("Own", m_key.get(), m_middleKey.get(), Now, own);
    QCOMPARE(leaf.validate(trusted, others), QCA::ValidityGood);
    QCA::CertificateCollection harmless = others;
    harmless.addCRL(listOf(m_authorityKey.get(), Now, false));
    QCOMPARE(leaf.validate(trusted, harmless), QCA::ValidityGood);
    others.addCRL(listOf(m_authorityKey.get(), Now, true));
    QCOMPARE(leaf.validate(trusted, others), QCA::ErrorRevoked);
}

void TestValidation::usages_data()
{
    QTest::addColumn<QByteArray>("purposes");
    QTest::addColumn<int>("usage");
    QTest::addColumn<bool>("isAllowed");
    const auto row = [](const char *name, const char *purposes, QCA::UsageMode usage,
                        bool isAllowed) {
        QTest::newRow(name) << QByteArray(purposes) << int(usage) << isAllowed;
    };
    row("its own", "clientAuth", QCA::UsageTLSClient, true);
    row("another", "clientAuth", QCA::UsageTLSServer, false);
    row("one of two", "clientAuth,emailProtection", QCA::UsageEmailProtection, true);
    row("none of two", "clientAuth,emailProtection", QCA::UsageCodeSigning, false);
    row("none is named", "", QCA::UsageTLSServer, true);
    row("any is asked for", "clientAuth", QCA::UsageAny, true);
}

void TestValidation::usages()
{
    QFETCH(QByteArray, purposes);
    QFETCH(int, usage);
    QFETCH(bool, isAllowed);
    QCA::CertificateCollection trusted;
    trusted.addCertificate(issued("Authority", m_authorityKey.get(), m_authorityKey.get(), Now));
    Particulars particulars;
    particulars.purposes = purposes.isEmpty() ? nullptr : purposes.constData();
    const QCA::Certificate leaf =
        issued("Own", m_key.get(), m_authorityKey.get(), Now, particulars);
    QCOMPARE(leaf.validate(trusted, {}, QCA::UsageMode(usage)),
             isAllowed ? QCA::ValidityGood : QCA::ErrorInvalidPurpose);
}

// A path is only as good as the one that is asked for: another one may lead to a root, too.
void TestValidation::chains()
{
    const PKeyHandle strangerKey(EVP_EC_gen("P-256"));
    const QCA::Certificate root =
        issued("Authority", m_authorityKey.get(), m_authorityKey.get(), Now);
    const QCA::Certificate stranger =
        issued("Authority", strangerKey.get(), strangerKey.get(), Now);
    Particulars particulars;
    particulars.isAuthority = true;
    const QCA::Certificate middle =
        issued("Middle", m_middleKey.get(), m_authorityKey.get(), Now, particulars);
    particulars.issuer = "Middle";
    const QCA::Certificate deep =
        issued("Deep", strangerKey.get(), m_middleKey.get(), Now, particulars);
    Particulars own;
    own.issuer = "Middle";
    const QCA::Certificate leaf = issued("Own", m_key.get(), m_middleKey.get(), Now, own);
    QCA::CertificateCollection trusted;
    trusted.addCertificate(root);
    const auto of = [&trusted](const QList<QCA::Certificate> &certificates) {
        QCA::CertificateChain chain;
        chain += certificates;
        return chain.validate(trusted);
    };
    QCOMPARE(of({leaf, middle}), QCA::ValidityGood);
    QCOMPARE(of({leaf, middle, root}), QCA::ValidityGood);
    QCOMPARE(of({middle}), QCA::ValidityGood);
    QCOMPARE(of({leaf}), QCA::ErrorUntrusted);
    QCOMPARE(of({}), QCA::ErrorValidityUnknown);
    // One that is in between, behind, or in the place of another.
    QCOMPARE(of({leaf, deep, middle}), QCA::ErrorValidityUnknown);
    QCOMPARE(of({leaf, root, middle}), QCA::ErrorValidityUnknown);
    QCOMPARE(of({leaf, middle, stranger}), QCA::ErrorValidityUnknown);
    QCOMPARE(of({leaf, middle, root, stranger}), QCA::ErrorValidityUnknown);
    QCOMPARE(of({middle, stranger}), QCA::ErrorValidityUnknown);
    // Trust in what is missing makes no chain of it.
    trusted.addCertificate(middle);
    QCOMPARE(of({leaf}), QCA::ErrorValidityUnknown);
    QCOMPARE(of({leaf, middle}), QCA::ValidityGood);
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestValidation test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_validation.moc"
