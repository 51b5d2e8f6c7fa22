// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Bundles at their bounds and one above: members, checks and iterations.
#include "qca/asn1/handles.h"
#include "qca/base/bounds.h"
#include "qca/base/providers.h"
#include "tests/x509/builtcertificate.h"
#include "tests/x509/corpus.h"

#include <QtTest>

#include <openssl/ec.h>
#include <openssl/pkcs12.h>

using namespace Trivex;
using namespace TrivexTest;

namespace {

constexpr char Secret[] = "secret";

PKeyHandle newKey()
{
    return PKeyHandle(EVP_EC_gen("P-256"));
}

void setName(X509_NAME *name, const QByteArray &text)
{
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_UTF8,
                               reinterpret_cast<const unsigned char *>(text.constData()),
                               text.size(), -1, 0);
}

X509Handle issued(const QByteArray &subject, EVP_PKEY *key, const QByteArray &issuer,
                  EVP_PKEY *issuerKey, int serial = 7)
{
    X509Handle made(X509_new());
    X509_set_version(made.get(), 2);
    ASN1_INTEGER_set(X509_get_serialNumber(made.get()), serial);
    X509_gmtime_adj(X509_getm_notBefore(made.get()), 0);
    X509_gmtime_adj(X509_getm_notAfter(made.get()), 86400);
    setName(X509_get_subject_name(made.get()), subject);
    setName(X509_get_issuer_name(made.get()), issuer);
    X509_set_pubkey(made.get(), key);
    X509_sign(made.get(), issuerKey, EVP_sha256());
    return made;
}

X509Handle parsed(const QByteArray &der)
{
    const auto *data = reinterpret_cast<const unsigned char *>(der.constData());
    return X509Handle(d2i_X509(nullptr, &data, der.size()));
}

/// A bundle under way.
class Bundle {
public:
    ~Bundle() { sk_PKCS12_SAFEBAG_pop_free(m_bags, PKCS12_SAFEBAG_free); }

    void key(const QByteArray &privateInfo)
    {
        const auto *data = reinterpret_cast<const unsigned char *>(privateInfo.constData());
        sk_PKCS12_SAFEBAG_push(m_bags,
                               PKCS12_SAFEBAG_create0_p8inf(
                                   d2i_PKCS8_PRIV_KEY_INFO(nullptr, &data, privateInfo.size())));
        identify();
    }
    void key(EVP_PKEY *key) { PKCS12_add_key(&m_bags, key, 0, 1, -1, nullptr); }
    void certificate(X509 *certificate) { PKCS12_add_cert(&m_bags, certificate); }
    /// Gives what was added last the identifier that all such have.
    void identify()
    {
        unsigned char id = 1;
        PKCS12_add_localkeyid(sk_PKCS12_SAFEBAG_value(m_bags, sk_PKCS12_SAFEBAG_num(m_bags) - 1),
                              &id, 1);
    }

    /// Puts all that was added so far into a bag of its own.
    void nest()
    {
        unsigned char *data = nullptr;
        const int size = ASN1_item_i2d(reinterpret_cast<ASN1_VALUE *>(m_bags), &data,
                                       ASN1_ITEM_rptr(PKCS12_SAFEBAGS));
        const QByteArray inside(reinterpret_cast<const char *>(data), size);
        OPENSSL_free(data);
        const QByteArray bag =
            derElement(0x30, oidElement(hex("2a864886f70d010c0a0106")) + derElement(0xa0, inside));
        sk_PKCS12_SAFEBAG_pop_free(m_bags, PKCS12_SAFEBAG_free);
        m_bags = sk_PKCS12_SAFEBAG_new_null();
        const auto *start = reinterpret_cast<const unsigned char *>(bag.constData());
        sk_PKCS12_SAFEBAG_push(m_bags, d2i_PKCS12_SAFEBAG(nullptr, &start, bag.size()));
    }

    QCA::KeyBundle read(QCA::ConvertResult *result, const QList<QByteArray> &safes = {},
                        const char *password = Secret)
    {
        STACK_OF(PKCS7) *all = nullptr;
        PKCS12_add_safe(&all, m_bags, -1, 1, nullptr);
        for (const QByteArray &safe : safes) {
            const auto *data = reinterpret_cast<const unsigned char *>(safe.constData());
            sk_PKCS7_push(all, d2i_PKCS7(nullptr, &data, safe.size()));
        }
        const Pkcs12Handle made(PKCS12_add_safes(all, 0));
        sk_PKCS7_pop_free(all, PKCS7_free);
        PKCS12_set_mac(made.get(), Secret, -1, nullptr, 0, 1, EVP_sha256());
        unsigned char *data = nullptr;
        const int size = i2d_PKCS12(made.get(), &data);
        const QByteArray der(reinterpret_cast<const char *>(data), size);
        OPENSSL_free(data);
        return QCA::KeyBundle::fromArray(der, QCA::SecureArray(password), result,
                                         opensslProviderName());
    }

private:
    STACK_OF(PKCS12_SAFEBAG) *m_bags = sk_PKCS12_SAFEBAG_new_null();
};

QByteArray number(int value)
{
    QByteArray octets;
    for (int shift = 24; shift >= 0; shift -= 8)
        octets += char(value >> shift);
    while (octets.size() > 1 && octets.at(0) == 0 && !(octets.at(1) & 0x80))
        octets.remove(0, 1);
    return derElement(0x02, octets);
}

/// A safe that nothing opens, whose key is derived in so many iterations.
QByteArray lockedSafe(int iterations)
{
    const QByteArray algorithm =
        derElement(0x30,
                   oidElement(hex("2a864886f70d010c0103"))
                       + derElement(0x30, derElement(0x04, "saltsalt") + number(iterations)));
    const QByteArray content = derElement(
        0x30, oidElement(hex("2a864886f70d010701")) + algorithm + derElement(0x80, "12345678"));
    return derElement(0x30,
                      oidElement(hex("2a864886f70d010706"))
                          + derElement(0xa0, derElement(0x30, number(0) + content)));
}

} // namespace

class TestBundleBounds : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void chains_data();
    void chains();
    void issuersToTry_data() { addCounts(MaxIssuerChecks); }
    void issuersToTry();
    void ownersToTry_data() { addCounts(MaxIssuerChecks); }
    void ownersToTry();
    void nesting();
    void iterations();

private:
    static void addCounts(int most);

    QCA::Initializer m_initializer;
};

void TestBundleBounds::addCounts(int most)
{
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("isRead");
    QTest::newRow("at the bound") << most << true;
    QTest::newRow("above it") << most + 1 << false;
}

void TestBundleBounds::chains_data()
{
    addCounts(MaxChainLength);
}

void TestBundleBounds::chains()
{
    QFETCH(int, count);
    QFETCH(bool, isRead);
    Bundle bundle;
    PKeyHandle key = newKey();
    bundle.key(key.get());
    for (int i = 1; i <= count; ++i) {
        PKeyHandle next = newKey();
        const bool isRoot = i == count;
        const X509Handle made =
            issued(QByteArray::number(i), key.get(), QByteArray::number(isRoot ? i : i + 1),
                   isRoot ? key.get() : next.get());
        bundle.certificate(made.get());
        key = std::move(next);
    }
    QCA::ConvertResult result = QCA::ErrorFile;
    const QCA::KeyBundle read = bundle.read(&result);
    QCOMPARE(int(result), int(isRead ? QCA::ConvertGood : QCA::ErrorDecode));
    QCOMPARE(read.certificateChain().size(), isRead ? count : 0);
}

// Namesakes of the issuer that are not it.
void TestBundleBounds::issuersToTry()
{
    QFETCH(int, count);
    QFETCH(bool, isRead);
    const PKeyHandle key = newKey();
    const PKeyHandle other = newKey();
    Bundle bundle;
    bundle.key(key.get());
    bundle.certificate(issued("Own", key.get(), "Issuer", key.get()).get());
    for (int i = 0; i < count; ++i)
        bundle.certificate(issued("Issuer", other.get(), "Nobody", other.get(), i).get());
    QCA::ConvertResult result = QCA::ErrorFile;
    const QCA::KeyBundle read = bundle.read(&result);
    QCOMPARE(int(result), int(isRead ? QCA::ConvertGood : QCA::ErrorDecode));
    QCOMPARE(read.certificateChain().size(), isRead ? 1 : 0);
}

// Certificates that claim a key of an unknown algorithm; the last one is right.
void TestBundleBounds::ownersToTry()
{
    QFETCH(int, count);
    QFETCH(bool, isRead);
    const QByteArray algorithm = derElement(0x30, oidElement(hex("2a0304")));
    const PKeyHandle other = newKey();
    Bundle bundle;
    bundle.key(derElement(0x30, number(0) + algorithm + derElement(0x04, "key")));
    for (int i = 1; i < count; ++i) {
        bundle.certificate(issued("Other", other.get(), "Nobody", other.get(), i).get());
        bundle.identify();
    }
    Parts parts;
    parts.key = derElement(0x30, algorithm + derElement(0x03, hex("00") + "key"));
    bundle.certificate(parsed(certificate(parts)).get());
    bundle.identify();
    QCA::ConvertResult result = QCA::ErrorFile;
    const QCA::KeyBundle read = bundle.read(&result);
    QCOMPARE(int(result), int(isRead ? QCA::ConvertGood : QCA::ErrorDecode));
}

// Eight bags in one another, the innermost with the members; what is deeper is not looked for.
void TestBundleBounds::nesting()
{
    const PKeyHandle key = newKey();
    for (const int outer : {7, 8}) {
        Bundle bundle;
        bundle.key(key.get());
        bundle.certificate(issued("Own", key.get(), "Issuer", key.get()).get());
        for (int i = 0; i < outer; ++i)
            bundle.nest();
        QCA::ConvertResult result = QCA::ErrorFile;
        bundle.read(&result);
        QCOMPARE(int(result), int(outer == 7 ? QCA::ConvertGood : QCA::ErrorDecode));
    }
}

// The check alone is one iteration, and says that the password is wrong, where it is made at all.
void TestBundleBounds::iterations()
{
    const QByteArray most = lockedSafe(int(MaxIterations));
    const auto resultOf = [](const QList<QByteArray> &safes) {
        QCA::ConvertResult result = QCA::ErrorFile;
        Bundle().read(&result, safes, "wrong");
        return int(result);
    };
    QCOMPARE(resultOf({most, most, lockedSafe(int(MaxIterations) - 1)}), int(QCA::ErrorPassphrase));
    QCOMPARE(resultOf({most, most, most}), int(QCA::ErrorDecode));
    QCOMPARE(resultOf({lockedSafe(int(MaxIterations) + 1)}), int(QCA::ErrorDecode));
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestBundleBounds test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_bundlebounds.moc"
