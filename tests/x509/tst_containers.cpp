// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// Bundles that no common program writes: keys without certificates before the one that has its own,
// identifiers that lie, checks of other kinds, names that are none, thousands of members.
#include "qca/base/bounds.h"
#include "qca/base/providers.h"
#include "qca/keys/keys.h"
#include "tests/x509/builtcertificate.h"
#include "tests/x509/bundlebuilder.h"
#include "tests/x509/corpus.h"

#include <QtTest>

#include <openssl/hmac.h>

using namespace Trivex;
using namespace TrivexTest;

namespace {

const QByteArray sha256Oid = hex("608648016503040201");

QCA::KeyBundle opened(const QByteArray &der, QCA::ConvertResult *result,
                      const QByteArray &secret = BundleBuilder::Password)
{
    return QCA::KeyBundle::fromArray(der, QCA::SecureArray(secret), result, opensslProviderName());
}

QCA::ConvertResult resultOf(const QByteArray &der,
                            const QByteArray &secret = BundleBuilder::Password)
{
    QCA::ConvertResult result = QCA::ErrorFile;
    opened(der, &result, secret);
    return result;
}

QString ownNameIn(const QByteArray &der)
{
    QCA::ConvertResult result = QCA::ErrorFile;
    const QCA::KeyBundle bundle = opened(der, &result);
    if (result != QCA::ConvertGood || bundle.certificateChain().isEmpty())
        return QStringLiteral("error %1").arg(result);
    const QCA::Certificate own = bundle.certificateChain().primary();
    if (!isSamePublicKey(bundle.privateKey().toPublicKey(), own.subjectPublicKey()))
        return QStringLiteral("of another key");
    return own.commonName();
}

QByteArray algorithm(const char *oid, const QByteArray &parameters = {})
{
    return derElement(0x30, oidElement(hex(oid)) + parameters);
}

constexpr char HmacSha256[] = "2a864886f70d0209";
constexpr char HmacSha512[] = "2a864886f70d020b";

struct Pbmac1 {
    QByteArray iterations = "\x40";
    QByteArray keyLength = derElement(0x02, " ");
    const char *function = "2a864886f70d01050c"; // PBKDF2
    const char *mac = HmacSha256;
    QByteArray pseudoRandom = algorithm(HmacSha256);
    const EVP_MD *pseudoRandomDigest = EVP_sha256();
    const EVP_MD *digest = EVP_sha256();
    int digestBytes = 0; ///< more or fewer than the digest has, if not 0
};

/// An unchecked bundle with that check (RFC 9579) by the password.
QByteArray withPbmac1(const QByteArray &bundle, const Pbmac1 &how)
{
    const QByteArray salt = "saltsalt";
    const auto *raw = reinterpret_cast<const unsigned char *>(bundle.constData());
    const Pkcs12Handle parsed(d2i_PKCS12(nullptr, &raw, bundle.size()));
    // Behind version, ContentInfo, its type, [0] and OCTET STRING, all with lengths of their own.
    int position = bundle.indexOf(hex("2a864886f70d010701")) + 9;
    for (int header = 0; header < 2; ++header) {
        const int first = uchar(bundle.at(position + 1));
        position += 2 + (first < 0x80 ? 0 : first & 0x7F);
    }
    const QByteArray content = bundle.mid(position);
    unsigned char key[32];
    unsigned char made[EVP_MAX_MD_SIZE];
    unsigned int size = 0;
    PKCS5_PBKDF2_HMAC(BundleBuilder::Password, -1,
                      reinterpret_cast<const unsigned char *>(salt.constData()), salt.size(),
                      how.iterations.at(0), how.pseudoRandomDigest, sizeof key, key);
    HMAC(how.digest, key, sizeof key, reinterpret_cast<const unsigned char *>(content.constData()),
         size_t(content.size()), made, &size);
    const QByteArray function =
        algorithm(how.function,
                  derElement(0x30,
                             derElement(0x04, salt) + derElement(0x02, how.iterations)
                                 + how.keyLength + how.pseudoRandom));
    const QByteArray parameters = derElement(0x30, function + algorithm(how.mac));
    QByteArray digest(reinterpret_cast<const char *>(made), int(size));
    if (how.digestBytes > 0)
        digest = digest.leftJustified(how.digestBytes, '\0', true);
    const QByteArray check = derElement(
        0x30,
        derElement(0x30, algorithm("2a864886f70d01050e", parameters) + derElement(0x04, digest))
            + derElement(0x04, salt) + derElement(0x02, "\x01"));
    // Behind tag and length of the whole.
    const int first = uchar(bundle.at(1));
    return derElement(0x30, bundle.mid(2 + (first < 0x80 ? 0 : first & 0x7F)) + check);
}

} // namespace

class TestContainers : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void keysWithoutCertificates();
    void identifiersInCommon();
    void identifiersThatLie();
    void lockedKeysBehindOthers();
    void manyKeys();
    void manyCertificates();
    void otherChecks();
    void checksOfOtherLengths();
    void unknownChecks();
    void emptyPasswords();
    void passwordsBeyondAscii();
    void oddNames();
    void nestedBags();
    void truncated();

private:
    QCA::Initializer m_initializer;
    const KeyAndCertificate m_one{"One"};
    const KeyAndCertificate m_two{"Two"};
    const KeyAndCertificate m_three{"Three"};
};

void TestContainers::keysWithoutCertificates()
{
    QCOMPARE(ownNameIn(BundleBuilder().key(m_one).key(m_two).certificate(m_two).sealed()),
             QStringLiteral("Two"));
    QCOMPARE(ownNameIn(BundleBuilder().certificate(m_two).key(m_one, "1").key(m_two, "2").sealed()),
             QStringLiteral("Two"));
    // The first of those that have one.
    QCOMPARE(ownNameIn(BundleBuilder()
                           .certificate(m_three)
                           .certificate(m_two)
                           .key(m_one)
                           .key(m_two)
                           .key(m_three)
                           .sealed()),
             QStringLiteral("Two"));
    QCOMPARE(resultOf(BundleBuilder().key(m_one).key(m_two).sealed()), QCA::ErrorDecode);
    QCOMPARE(resultOf(BundleBuilder().certificate(m_one).certificate(m_two).sealed()),
             QCA::ErrorDecode);
}

void TestContainers::identifiersInCommon()
{
    const QByteArray id = "same";
    QCOMPARE(ownNameIn(BundleBuilder()
                           .key(m_one, id)
                           .certificate(m_two, id)
                           .certificate(m_one, id)
                           .key(m_two, id)
                           .sealed()),
             QStringLiteral("One"));
}

// A certificate of another key is nobody's own, whatever the identifiers say.
void TestContainers::identifiersThatLie()
{
    QCOMPARE(resultOf(BundleBuilder().key(m_one, "1").certificate(m_two, "1").sealed()),
             QCA::ErrorDecode);
    QCOMPARE(ownNameIn(BundleBuilder()
                           .key(m_one, "1")
                           .certificate(m_two, "1")
                           .certificate(m_one, "2")
                           .sealed()),
             QStringLiteral("One"));
}

// One that another password locks keeps nobody from the rest.
void TestContainers::lockedKeysBehindOthers()
{
    QCOMPARE(ownNameIn(BundleBuilder()
                           .key(m_one, {}, "other")
                           .key(m_two, {}, BundleBuilder::Password)
                           .certificate(m_two)
                           .certificate(m_one)
                           .sealed()),
             QStringLiteral("Two"));
    QCOMPARE(
        resultOf(BundleBuilder().key(m_one, {}, "other").certificate(m_one).sealed(nullptr, false)),
        QCA::ErrorPassphrase);
    // Where the check tells that the password is right, nobody is asked for it again and again.
    QCOMPARE(resultOf(BundleBuilder().key(m_one, {}, "other").certificate(m_one).sealed()),
             QCA::ErrorDecode);
}

void TestContainers::manyKeys()
{
    BundleBuilder most;
    for (int i = 0; i < MaxBundleKeys - 1; ++i)
        most.key(m_one);
    QCOMPARE(ownNameIn(most.key(m_two).certificate(m_two).sealed()), QStringLiteral("Two"));
    QCOMPARE(resultOf(most.key(m_two).sealed()), QCA::ErrorDecode);
}

void TestContainers::manyCertificates()
{
    BundleBuilder made;
    made.key(m_one);
    for (int i = 0; i < 5000; ++i)
        made.certificate(i % 2 ? m_two : m_three, "same");
    const QByteArray der = made.certificate(m_one).sealed();
    QCOMPARE(ownNameIn(der), QStringLiteral("One"));
}

void TestContainers::otherChecks()
{
    const QByteArray plain = BundleBuilder().key(m_one).certificate(m_one).sealed(nullptr, false);
    const QByteArray checked = withPbmac1(plain, {});
    QCOMPARE(ownNameIn(checked), QStringLiteral("One"));
    QCOMPARE(resultOf(checked, "wrong"), QCA::ErrorPassphrase);
    QCOMPARE(resultOf(checked, ""), QCA::ErrorPassphrase);
    Pbmac1 other;
    other.mac = HmacSha512;
    other.digest = EVP_sha512();
    QCOMPARE(ownNameIn(withPbmac1(plain, other)), QStringLiteral("One"));
    // SHA-1 where nothing is said.
    other.pseudoRandom.clear();
    other.pseudoRandomDigest = EVP_sha1();
    QCOMPARE(ownNameIn(withPbmac1(plain, other)), QStringLiteral("One"));
    QByteArray damaged = checked;
    const int place = damaged.indexOf(hex("2a864886f70d010701")) + 40;
    damaged[place] = char(damaged.at(place) ^ 1);
    QVERIFY(resultOf(damaged) != QCA::ConvertGood);
}

// The check is right as far as it goes, or begins rightly.
void TestContainers::checksOfOtherLengths()
{
    const QByteArray plain = BundleBuilder().key(m_one).certificate(m_one).sealed(nullptr, false);
    for (const int bytes : {1, 31, 33, 64}) {
        Pbmac1 odd;
        odd.digestBytes = bytes;
        QCOMPARE(resultOf(withPbmac1(plain, odd)), QCA::ErrorPassphrase);
    }
    Pbmac1 whole;
    whole.digestBytes = 32;
    QCOMPARE(resultOf(withPbmac1(plain, whole)), QCA::ConvertGood);
}

void TestContainers::unknownChecks()
{
    // The password may be right: nobody can tell.
    QByteArray der = BundleBuilder().key(m_one).certificate(m_one).sealed();
    QVERIFY(der.lastIndexOf(sha256Oid) > 0);
    der[der.lastIndexOf(sha256Oid) + sha256Oid.size() - 1] = 'c';
    QCOMPARE(resultOf(der), QCA::ErrorDecode);
    const QByteArray plain = BundleBuilder().key(m_one).certificate(m_one).sealed(nullptr, false);
    QVector<Pbmac1> unknown(7);
    unknown[0].iterations = hex("7fffffff"); // the test would not end
    unknown[1].mac = "2a864886f70d0263";
    unknown[2].function = "2b06010401da47040b"; // scrypt has other parameters
    unknown[3].keyLength.clear();
    unknown[4].keyLength = derElement(0x02, hex("7fff"));
    unknown[5].pseudoRandom = algorithm("2a864886f70d0263");
    unknown[6].keyLength = derElement(0x02, hex("00"));
    for (const Pbmac1 &one : qAsConst(unknown)) {
        QCOMPARE(resultOf(withPbmac1(plain, one)), QCA::ErrorDecode);
    }
}

void TestContainers::emptyPasswords()
{
    const auto made = [this](const char *secret) {
        return BundleBuilder().key(m_one).certificate(m_one).sealed(secret);
    };
    QCOMPARE(resultOf(made(""), ""), QCA::ConvertGood);
    QCOMPARE(resultOf(made(nullptr), ""), QCA::ConvertGood);
    QCOMPARE(resultOf(made(""), "x"), QCA::ErrorPassphrase);
    QCOMPARE(resultOf(made(nullptr), "x"), QCA::ErrorPassphrase);
}

void TestContainers::passwordsBeyondAscii()
{
    for (const char *secret : {"пароль", "🔑 ключ", "é", "\u00e9\u0301", "日本"}) {
        const QByteArray der =
            BundleBuilder().key(m_one, {}, secret).certificate(m_one).sealed(secret);
        QCOMPARE(resultOf(der, secret), QCA::ConvertGood);
        QCOMPARE(resultOf(der, QByteArray(secret) + 'x'), QCA::ErrorPassphrase);
    }
    // What a code page lacks is nothing that stands in its place.
    for (const char *secret : {"??", "?", "пароль?", ""}) {
        const QByteArray der = BundleBuilder().key(m_one).certificate(m_one).sealed(secret);
        for (const char *other : {"日本", "日", "пароль日", "🔑"})
            QCOMPARE(resultOf(der, other), QCA::ErrorPassphrase);
    }
}

void TestContainers::oddNames()
{
    for (const char *name : {"", "00", "0041d800", "d8000041", "dc00", "00410000004200", "feff",
                             "000000410042", "0041004"}) {
        QCA::ConvertResult result = QCA::ErrorFile;
        const QCA::KeyBundle bundle = opened(
            BundleBuilder().key(m_one).named(hex(name)).certificate(m_one).sealed(), &result);
        QCOMPARE(result, QCA::ConvertGood);
        QVERIFY2(bundle.name().size() <= 8, name);
    }
    const auto nameIn = [this](const QByteArray &utf16) {
        QCA::ConvertResult result = QCA::ErrorFile;
        return opened(BundleBuilder().key(m_one).named(utf16).certificate(m_one).sealed(), &result)
            .name();
    };
    QCOMPARE(nameIn(hex("0418043c044f0020d83dde00")), QStringLiteral("Имя 😀"));
    // With characters of three octets in UTF-8 at their ends.
    QCOMPARE(nameIn(hex("65e5672c")), QStringLiteral("日本"));
    QCOMPARE(nameIn(hex("041a043b044e04472116")), QStringLiteral("Ключ№"));
    QCOMPARE(nameIn(hex("2116")), QStringLiteral("№"));
    QCOMPARE(nameIn(hex("21160000")), QStringLiteral("№"));
    QCOMPARE(nameIn(hex("00410000")), QStringLiteral("A"));
    QCOMPARE(nameIn(hex("004100000042")), QStringLiteral("A"));
}

void TestContainers::nestedBags()
{
    QCOMPARE(ownNameIn(BundleBuilder().key(m_one).certificate(m_one).nested().nested().sealed()),
             QStringLiteral("One"));
    QCOMPARE(ownNameIn(BundleBuilder().key(m_two).nested().certificate(m_two).sealed()),
             QStringLiteral("Two"));
    BundleBuilder deep;
    deep.key(m_one).certificate(m_one);
    for (int i = 0; i < 12; ++i)
        deep.nested();
    QCOMPARE(resultOf(deep.sealed()), QCA::ErrorDecode);
}

void TestContainers::truncated()
{
    const QByteArray whole = BundleBuilder().key(m_one).certificate(m_one).sealed();
    for (int size = 0; size < whole.size(); ++size)
        QCOMPARE(resultOf(whole.left(size)), QCA::ErrorDecode);
}

int main(int argc, char *argv[])
{
    Corpus::prepareEnvironment();
    QCoreApplication application(argc, argv);
    TestContainers test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_containers.moc"
