// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/x509/oddkeys.h"

#include "qca/asn1/der.h"
#include "qca/asn1/derwriter.h"
#include "qca/asn1/handles.h"
#include "qca/keys/keytypes.h"
#include "tests/x509/builtcertificate.h"

#include <QCryptographicHash>

#include <openssl/core_names.h>
#include <openssl/dsa.h>
#include <openssl/ec.h>
#include <openssl/evp.h>
#include <openssl/objects.h>
#include <openssl/rsa.h>

using namespace Trivex;

namespace TrivexTest {

namespace {

constexpr char Rsa[] = "2a864886f70d010101";
constexpr char RsaPss[] = "2a864886f70d01010a";
constexpr char Dsa[] = "2a8648ce380401";
constexpr char Dh[] = "2a864886f70d010301";
constexpr char DhX942[] = "2a8648ce3e0201";
constexpr char Ec[] = "2a8648ce3d0201";
constexpr char P256[] = "2a8648ce3d030107";
constexpr char Gost2001[] = "2a8503020213";
constexpr char Gost2012[] = "2a85030701010101";
constexpr char Gost2012Long[] = "2a85030701010102";
constexpr char MlDsa44[] = "608648016503040311";

const QByteArray null = hex("0500");

QByteArray oid(const char *digits)
{
    return oidElement(hex(digits));
}

QByteArray sequence(const QByteArray &content)
{
    return derElement(0x30, content);
}

/// The octets of a positive number.
QByteArray integer(const QByteArray &octets)
{
    return derElement(0x02, uchar(octets.at(0)) & 0x80 ? '\0' + octets : octets);
}

QByteArray small(char value)
{
    return derElement(0x02, QByteArray(1, value));
}

QByteArray publicInfo(const QByteArray &algorithm, const QByteArray &key)
{
    return sequence(sequence(algorithm) + derElement(0x03, '\0' + key));
}

QByteArray privateInfo(const QByteArray &algorithm, const QByteArray &key)
{
    return sequence(small(0) + sequence(algorithm) + derElement(0x04, key));
}

QByteArray ones(int octets)
{
    return QByteArray(octets, '\xff');
}

QByteArray rsa(const QByteArray &modulus, const QByteArray &exponent,
               const QByteArray &algorithm = oid(Rsa) + null)
{
    return publicInfo(algorithm, sequence(derElement(0x02, modulus) + derElement(0x02, exponent)));
}

/// A modulus of that many bits: whether it has two factors, nobody can tell soon.
QByteArray modulus(int bits)
{
    return '\0' + ones(bits / 8);
}

QByteArray pss(const QByteArray &parameters)
{
    return rsa(modulus(1024), hex("010001"), oid(RsaPss) + parameters);
}

QByteArray digest(const char *digits)
{
    return sequence(oid(digits) + null);
}

constexpr char Sha1[] = "2b0e03021a";
constexpr char Sha256[] = "608648016503040201";

/// With the digest, that of the mask and the length of the salt.
QByteArray pssParameters(const char *hash, const char *maskHash, const QByteArray &salt,
                         const QByteArray &trailer = {})
{
    return sequence(derElement(0xa0, digest(hash))
                    + derElement(0xa1, sequence(oid("2a864886f70d010108") + digest(maskHash)))
                    + derElement(0xa2, derElement(0x02, salt)) + trailer);
}

QByteArray ec(const QByteArray &parameters, const QByteArray &point)
{
    return publicInfo(oid(Ec) + parameters, point);
}

const QByteArray prime256 = hex("ffffffff00000001000000000000000000000000ffffffffffffffffffffffff");
const QByteArray a256 = hex("ffffffff00000001000000000000000000000000fffffffffffffffffffffffc");
const QByteArray b256 = hex("5ac635d8aa3a93e7b3ebbd55769886bc651d06b0cc53b0f63bce3c3e27d2604b");
const QByteArray x256 = hex("6b17d1f2e12c4247f8bce6e563a440f277037d812deb33a0f4a13945d898c296");
const QByteArray y256 = hex("4fe342e2fe1a7f9b8ee7eb4a7c0f9e162bce33576b315ececbb6406837bf51f5");
const QByteArray order256 = hex("ffffffff00000000ffffffffffffffffbce6faada7179e84f3b9cac2fc632551");
const QByteArray generator256 = '\x04' + x256 + y256;

QByteArray curve(const QByteArray &order = order256, const QByteArray &prime = prime256,
                 const QByteArray &generator = generator256)
{
    return sequence(small(1) + sequence(oid("2a8648ce3d0101") + integer(prime))
                    + sequence(derElement(0x04, a256) + derElement(0x04, b256))
                    + derElement(0x04, generator) + integer(order) + small(1));
}

/// On a domain without a prime in it; libcrypto wants the order to have one of three sizes.
QByteArray dsaDomain(int octets, const QByteArray &generator = hex("07"))
{
    return sequence(integer(ones(octets)) + integer(order256) + derElement(0x02, generator));
}

QByteArray dsa(const QByteArray &y, const QByteArray &domain = dsaDomain(128))
{
    return publicInfo(oid(Dsa) + domain, derElement(0x02, y));
}

QByteArray gost(const char *algorithm, const char *curveOid, int octets)
{
    const QByteArray digestOid =
        QByteArray(algorithm) == Gost2001 ? oid("2a850302021e01") : QByteArray();
    return publicInfo(oid(algorithm) + sequence(oid(curveOid) + digestOid),
                      derElement(0x04, QByteArray(octets, '\x21')));
}

QList<OddKey> rsaKeys()
{
    const QByteArray good = hex("010001");
    const QByteArray wide = modulus(2048);
    QByteArray even = wide;
    even[even.size() - 1] = '\xfe';
    return {
        {"rsa 512", RsaKey, "RSA", rsa(modulus(512), good)},
        {"rsa 16384", RsaKey, "RSA", rsa(modulus(16384), good)},
        {"rsa 16392", RsaKey, "RSA", rsa(modulus(16392), good)},
        {"rsa of 8 bits", RsaKey, "RSA", rsa(modulus(8), hex("03"))},
        {"rsa exponent 0", RsaKey, "RSA", rsa(wide, hex("00"))},
        {"rsa exponent 1", RsaKey, "RSA", rsa(wide, hex("01"))},
        {"rsa exponent 2", RsaKey, "RSA", rsa(wide, hex("02"))},
        {"rsa exponent -3", RsaKey, "RSA", rsa(wide, hex("fd"))},
        {"rsa exponent above modulus", RsaKey, "RSA", rsa(wide, modulus(2056))},
        {"rsa even modulus", RsaKey, "RSA", rsa(even, good)},
        {"rsa modulus 0", RsaKey, "RSA", rsa(hex("00"), good)},
        {"rsa modulus 1", RsaKey, "RSA", rsa(hex("01"), good)},
        {"rsa negative modulus", RsaKey, "RSA", rsa(ones(256), good)},
        {"rsa without numbers", RsaKey, "RSA", publicInfo(oid(Rsa) + null, sequence({}))},
        {"rsa without parameters", RsaKey, "RSA", rsa(wide, good, oid(Rsa))},
        {"pss", OtherKey, "rsassaPss", pss({})},
        {"pss null", OtherKey, "rsassaPss", pss(null)},
        {"pss defaults", OtherKey, "rsassaPss", pss(sequence({}))},
        {"pss long salt", OtherKey, "rsassaPss", pss(pssParameters(Sha256, Sha256, hex("7fff")))},
        {"pss endless salt", OtherKey, "rsassaPss",
         pss(pssParameters(Sha256, Sha256, modulus(1024)))},
        {"pss negative salt", OtherKey, "rsassaPss", pss(pssParameters(Sha256, Sha256, hex("ff")))},
        {"pss other mask", OtherKey, "rsassaPss", pss(pssParameters(Sha256, Sha1, hex("20")))},
        {"pss unknown digest", OtherKey, "rsassaPss",
         pss(pssParameters("2a0304", Sha256, hex("20")))},
        {"pss other trailer", OtherKey, "rsassaPss",
         pss(pssParameters(Sha256, Sha256, hex("20"), derElement(0xa3, small(2))))},
        {"pss no parameters", OtherKey, "rsassaPss", pss(hex("0c0178"))},
    };
}

QList<OddKey> curveKeys()
{
    const QByteArray p256 = oid(P256);
    const auto bare = [](const char *digits, int octets,
                         const QByteArray &parameters = {}) -> QByteArray {
        return publicInfo(oid(digits) + parameters, QByteArray(octets, '\x09'));
    };
    return {
        {"ec explicit", EllipticCurveKey, "Elliptic Curve", ec(curve(), generator256)},
        {"ec of small order", EllipticCurveKey, "Elliptic Curve",
         ec(curve(hex("03")), generator256)},
        {"ec of no field", EllipticCurveKey, "Elliptic Curve",
         ec(curve(order256, ones(32)), generator256)},
        {"ec of no field, compressed", EllipticCurveKey, "Elliptic Curve",
         ec(curve(order256, ones(32), '\x02' + x256), '\x02' + x256)},
        {"ec of a giant field", EllipticCurveKey, "Elliptic Curve",
         ec(curve(order256, ones(4096)), generator256)},
        {"ec at infinity", EllipticCurveKey, "Elliptic Curve", ec(p256, hex("00"))},
        {"ec explicit at infinity", EllipticCurveKey, "Elliptic Curve", ec(curve(), hex("00"))},
        {"ec beside the curve", EllipticCurveKey, "Elliptic Curve", ec(p256, '\x04' + x256 + x256)},
        {"ec cut", EllipticCurveKey, "Elliptic Curve", ec(p256, generator256.left(40))},
        {"ec of no octets", EllipticCurveKey, "Elliptic Curve", ec(p256, {})},
        {"ec inherited", EllipticCurveKey, "Elliptic Curve", ec(null, generator256)},
        {"ec unknown curve", EllipticCurveKey, "Elliptic Curve", ec(oid("2a0304"), generator256)},
        {"x25519", OtherKey, "X25519", bare("2b656e", 32)},
        {"x448", OtherKey, "X448", bare("2b656f", 56)},
        {"ed25519", OtherKey, "ED25519", bare("2b6570", 32)},
        {"ed448", OtherKey, "ED448", bare("2b6571", 57)},
        {"ed448 cut", OtherKey, "ED448", bare("2b6571", 56)},
        {"ed25519 empty", OtherKey, "ED25519", bare("2b6570", 0)},
        {"ed25519 with parameters", OtherKey, "ED25519", bare("2b6570", 32, null)},
    };
}

// Releases differ in what they have a name for; empty without one.
const char *nameForLibcrypto(const char *identifier)
{
    const int number = OBJ_txt2nid(identifier);
    return number == NID_undef ? "" : OBJ_nid2ln(number);
}

QList<OddKey> otherKeys()
{
    // As libcrypto calls them.
    const char *const name2001 = "GOST R 34.10-2001";
    const char *const name2012 = "GOST R 34.10-2012 with 256 bit modulus";
    const char *const nameLong = "GOST R 34.10-2012 with 512 bit modulus";
    return {
        {"dsa", DsaKey, "DSA", dsa(hex("05"))},
        {"dsa inherited", DsaKey, "DSA", publicInfo(oid(Dsa), small(5))},
        {"dsa null", DsaKey, "DSA", publicInfo(oid(Dsa) + null, small(5))},
        {"dsa nothing", DsaKey, "DSA", dsa(hex("00"), sequence(small(0).repeated(3)))},
        {"dsa negative", DsaKey, "DSA", dsa(hex("ff"), sequence(small('\xff').repeated(3)))},
        {"dsa giant", DsaKey, "DSA", dsa(hex("05"), dsaDomain(20000))},
        {"dh", DhKey, "DH",
         publicInfo(oid(Dh) + sequence(integer(ones(128)) + small(2)), small(5))},
        {"dh nothing", DhKey, "DH", publicInfo(oid(Dh) + sequence({}), small(0))},
        {"dh x9.42", DhKey, "DH",
         publicInfo(oid(DhX942) + sequence(integer(ones(128)) + small(2) + integer(order256)),
                    small(5))},
        {"gost 2001", Gost2001Key, name2001, gost(Gost2001, "2a850302022301", 64)},
        {"gost 2012", Gost2012Key256, name2012, gost(Gost2012, "2a850302022301", 64)},
        {"gost 2012 long", Gost2012Key512, nameLong, gost(Gost2012Long, "2a8503070102010201", 128)},
        {"gost of an unknown curve", Gost2012Key256, name2012, gost(Gost2012, "2a0304", 64)},
        {"gost cut", Gost2012Key256, name2012, gost(Gost2012, "2a850302022301", 63)},
        {"gost without parameters", Gost2012Key512, nameLong,
         publicInfo(oid(Gost2012Long), derElement(0x04, QByteArray(128, '\x21')))},
        // What the command and libcrypto have no name for, the type gives none.
        {"ml-dsa", OtherKey, nameForLibcrypto("2.16.840.1.101.3.4.3.17"),
         publicInfo(oid(MlDsa44), QByteArray(1312, '\x55'))},
        {"nobody's", OtherKey, "", publicInfo(oid("2a0304"), {})},
        {"of a digest", OtherKey, "sha256", publicInfo(oid(Sha256), small(1))},
    };
}

QByteArray hashOf(const QByteArray &message)
{
    return QCryptographicHash::hash(message, QCryptographicHash::Sha256);
}

QByteArray pairOf(const QByteArray &r, const QByteArray &s)
{
    return sequence(integer(r) + integer(s));
}

QByteArray ecdsaAlgorithm()
{
    return sequence(oid("2a8648ce3d040302"));
}

Forgery exponentOne()
{
    return {"exponent 1", rsa(modulus(1024), hex("01")), sequence(oid("2a864886f70d01010b") + null),
            [](const QByteArray &message) -> QByteArray {
                const QByteArray info =
                    hex("3031300d060960864801650304020105000420") + hashOf(message);
                return hex("0001") + ones(128 - 3 - info.size()) + '\0' + info;
            }};
}

/// An order of 3 leaves four signatures to try; `message` has one of them.
Forgery smallOrder()
{
    const QByteArray key = ec(curve(hex("03")), generator256);
    return {
        "curve of order 3", key, ecdsaAlgorithm(), [key](const QByteArray &message) -> QByteArray {
            const auto *data = reinterpret_cast<const unsigned char *>(key.constData());
            const PKeyHandle native(d2i_PUBKEY(nullptr, &data, key.size()));
            for (const QByteArray &tried :
                 {sequence(small(1) + small(1)), sequence(small(1) + small(2)),
                  sequence(small(2) + small(1)), sequence(small(2) + small(2))}) {
                const DigestContextHandle context(EVP_MD_CTX_new());
                EVP_DigestVerifyInit(context.get(), nullptr, EVP_sha256(), nullptr, native.get());
                if (EVP_DigestVerify(context.get(),
                                     reinterpret_cast<const unsigned char *>(tried.constData()),
                                     size_t(tried.size()),
                                     reinterpret_cast<const unsigned char *>(message.constData()),
                                     size_t(message.size()))
                    == 1)
                    return tried;
            }
            return QByteArray("none");
        }};
}

/// A key of few multiples, with the signature of number 1 and the base point.
Forgery smallPoint(const char *name, const char *digits, const QByteArray &key,
                   const QByteArray &base)
{
    return {name, publicInfo(oid(digits), key), sequence(oid(digits)),
            [base](const QByteArray &) -> QByteArray {
                return base + '\x01' + QByteArray(base.size() - 1, '\0');
            }};
}

const QByteArray base25519 = '\x58' + QByteArray(31, '\x66');
const QByteArray base448 =
    hex("14fa30f25b790898adc8d74e2c13bdfdc4397ce61cffd33ad7c2a0051e9c78874098a36c7373ea4b62c7c956"
        "3720768824bcb66e71463f6900");

} // namespace

QList<OddKey> oddPublicKeys()
{
    return rsaKeys() + curveKeys() + otherKeys();
}

QList<Forgery> forgeries()
{
    const QByteArray dsaAlgorithm = sequence(oid("608648016503040302"));
    const auto withHash = [](const QByteArray &r) {
        return [r](const QByteArray &message) -> QByteArray { return pairOf(r, hashOf(message)); };
    };
    return {
        exponentOne(),
        {"point at infinity", ec(oid(P256), hex("00")), ecdsaAlgorithm(), withHash(x256)},
        smallOrder(),
        smallPoint("neutral point of ed25519", "2b6570", '\x01' + QByteArray(31, '\0'), base25519),
        smallPoint("ed25519 point of order 2", "2b6570", '\xec' + ones(30) + '\x7f', base25519),
        smallPoint("ed25519 point of order 4", "2b6570", QByteArray(31, '\0') + '\x80', base25519),
        smallPoint("ed25519 point of order 8", "2b6570",
                   hex("26e8958fc2b227b045c3f489f2ef98f0d5dfac05d3c63339b13802886d53fc85"),
                   base25519),
        smallPoint("ed25519 point above the prime", "2b6570", '\xee' + ones(30) + '\x7f',
                   base25519),
        smallPoint("ed448 point of order 4", "2b6571", QByteArray(57, '\0'), base448),
        {"dsa of value 1", dsa(hex("01")), dsaAlgorithm, withHash(hex("07"))},
        {"dsa of generator 1", dsa(hex("01"), dsaDomain(128, hex("01"))), dsaAlgorithm,
         withHash(hex("01"))},
    };
}

namespace {

QByteArray rsaPrivate(int octets, const QByteArray &exponent, const QByteArray &others = {})
{
    const QByteArray factor = integer(ones(octets / 2));
    const QByteArray version = small(others.isEmpty() ? 0 : 1);
    return privateInfo(oid(Rsa) + null,
                       sequence(version + integer(ones(octets)) + integer(hex("010001"))
                                + integer(exponent) + factor.repeated(5)
                                + (others.isEmpty() ? QByteArray() : sequence(others))));
}

QByteArray dsaPrivate(int octets, const QByteArray &x)
{
    return privateInfo(oid(Dsa) + dsaDomain(octets), integer(x));
}

QByteArray dhPrivate(int octets)
{
    return privateInfo(oid(Dh) + sequence(integer(ones(octets)) + small(2)),
                       integer(ones(octets - 1)));
}

template <class Encode> QByteArray encoded(EVP_PKEY *key, Encode encode)
{
    unsigned char *data = nullptr;
    const int size = encode(key, &data);
    const QByteArray der(reinterpret_cast<const char *>(data), qMax(size, 0));
    OPENSSL_free(data);
    return der;
}

int encodePrivate(EVP_PKEY *key, unsigned char **data)
{
    const Pkcs8Handle info(EVP_PKEY2PKCS8(key));
    return i2d_PKCS8_PRIV_KEY_INFO(info.get(), data);
}

OddPair pairOf(const char *name, int type, const PKeyHandle &key)
{
    return {name, type, encoded(key.get(), &encodePrivate), encoded(key.get(), &i2d_PUBKEY)};
}

PKeyHandle generated(const char *type, const std::function<void(EVP_PKEY_CTX *)> &prepare = {})
{
    const KeyContextHandle context(EVP_PKEY_CTX_new_from_name(nullptr, type, nullptr));
    EVP_PKEY_keygen_init(context.get());
    if (prepare)
        prepare(context.get());
    EVP_PKEY *key = nullptr;
    EVP_PKEY_generate(context.get(), &key);
    return PKeyHandle(key);
}

PKeyHandle dsaKey()
{
    const KeyContextHandle domains(EVP_PKEY_CTX_new_from_name(nullptr, "DSA", nullptr));
    EVP_PKEY_paramgen_init(domains.get());
    EVP_PKEY_CTX_set_dsa_paramgen_bits(domains.get(), 1024);
    EVP_PKEY *made = nullptr;
    EVP_PKEY_generate(domains.get(), &made);
    const PKeyHandle domain(made);
    const KeyContextHandle context(EVP_PKEY_CTX_new(domain.get(), nullptr));
    made = nullptr;
    EVP_PKEY_keygen_init(context.get());
    EVP_PKEY_generate(context.get(), &made);
    return PKeyHandle(made);
}

void preparePss(EVP_PKEY_CTX *context)
{
    EVP_PKEY_CTX_set_rsa_keygen_bits(context, 1024);
    EVP_PKEY_CTX_set_rsa_pss_keygen_md(context, EVP_sha256());
    EVP_PKEY_CTX_set_rsa_pss_keygen_mgf1_md(context, EVP_sha1());
    EVP_PKEY_CTX_set_rsa_pss_keygen_saltlen(context, 500);
}

void prepareExplicit(EVP_PKEY_CTX *context)
{
    EVP_PKEY_CTX_set_group_name(context, "P-256");
    EVP_PKEY_CTX_set_ec_param_enc(context, OPENSSL_EC_EXPLICIT_CURVE);
}

} // namespace

QList<OddPrivateKey> oddPrivateKeys()
{
    const QByteArray other = sequence(integer(ones(30)) + small(3) + small(3));
    return {
        {"rsa 16384", rsaPrivate(2048, ones(2048)), true},
        {"rsa 16392", rsaPrivate(2049, ones(2048)), false},
        {"rsa of a long exponent", rsaPrivate(256, ones(2049)), false},
        {"rsa of three factors", rsaPrivate(256, ones(256), other), true},
        {"rsa of thousands of factors", rsaPrivate(256, ones(256), other.repeated(2000)), false},
        {"dsa 10000", dsaPrivate(1250, hex("05")), true},
        {"dsa 10008", dsaPrivate(1251, hex("05")), false},
        {"dsa of hours", dsaPrivate(7000, ones(7000)), false},
        {"dsa of a long exponent", dsaPrivate(128, ones(1251)), false},
        {"dh 10008", dhPrivate(1251), false},
    };
}

QList<OddPair> oddPairs()
{
    return {
        pairOf("rsa 512", RsaKey, PKeyHandle(EVP_RSA_gen(512))),
        pairOf("pss", OtherKey, generated("RSA-PSS", &preparePss)),
        pairOf("ec explicit", EllipticCurveKey, generated("EC", &prepareExplicit)),
        pairOf("x25519", OtherKey, generated("X25519")),
        pairOf("x448", OtherKey, generated("X448")),
        pairOf("ed25519", OtherKey, generated("ED25519")),
        pairOf("ed448", OtherKey, generated("ED448")),
        pairOf("dsa", DsaKey, dsaKey()),
        {"dh", DhKey, privateInfo(oid(Dh) + sequence(integer(ones(128)) + small(2)), small(5)),
         shortest(publicInfo(oid(Dh) + sequence(integer(ones(128)) + small(2)), small(32)))},
        {"ml-dsa", OtherKey, privateInfo(oid(MlDsa44), QByteArray(2560, '\x33')),
         shortest(publicInfo(oid(MlDsa44), QByteArray(1312, '\x55')))},
    };
}

QByteArray shortest(const QByteArray &der)
{
    QByteArray result;
    Der::Reader reader(Der::sliceOf(der));
    Der::Element element;
    while (reader.next(&element)) {
        const QByteArray content = element.content.bytes();
        result += Der::write(element.tag,
                             element.tag & Der::ConstructedBit ? shortest(content) : content);
    }
    return result;
}

} // namespace TrivexTest
