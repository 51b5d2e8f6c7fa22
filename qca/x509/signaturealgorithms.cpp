// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/signaturealgorithms.h"

#include "qca/asn1/derwriter.h"
#include "qca/keys/keytypes.h"

namespace Trivex {

namespace {

struct AlgorithmNumber {
    const char *oid;
    QCA::SignatureAlgorithm number;
};

constexpr AlgorithmNumber Numbers[] = {
    {"1.2.840.113549.1.1.11", QCA::EMSA3_SHA256}, {"1.2.840.113549.1.1.5", QCA::EMSA3_SHA1},
    {"1.2.840.113549.1.1.12", QCA::EMSA3_SHA384}, {"1.2.840.113549.1.1.13", QCA::EMSA3_SHA512},
    {"1.2.840.113549.1.1.14", QCA::EMSA3_SHA224}, {"1.2.840.113549.1.1.4", QCA::EMSA3_MD5},
    {"1.2.840.113549.1.1.2", QCA::EMSA3_MD2},     {"1.3.14.3.2.29", QCA::EMSA3_SHA1},
    {"1.3.36.3.3.1.2", QCA::EMSA3_RIPEMD160},     {"1.2.840.10040.4.3", QCA::EMSA1_SHA1},
};

constexpr char Ed25519[] = "1.3.101.112";
constexpr char Ed448[] = "1.3.101.113";

QByteArray identifier(const char *oid, bool withNull = false)
{
    QList<QByteArray> parts = {Der::writeOid(oid)};
    if (withNull)
        parts += Der::write(Der::Null, {});
    return Der::writeSequence(parts);
}

SignatureScheme curveScheme(int bits)
{
    if (bits <= 256)
        return {"SHA256", identifier("1.2.840.10045.4.3.2")};
    if (bits <= 384)
        return {"SHA384", identifier("1.2.840.10045.4.3.3")};
    return {"SHA512", identifier("1.2.840.10045.4.3.4")};
}

SignatureScheme edwardsScheme(const QByteArray &spki)
{
    for (const char *oid : {Ed25519, Ed448}) {
        const QByteArray algorithm = identifier(oid);
        if (spki.contains(algorithm))
            return {{}, algorithm};
    }
    return {};
}

} // namespace

QCA::SignatureAlgorithm signatureAlgorithmOf(Der::Slice algorithm)
{
    Der::Slice content;
    if (!Der::Reader(algorithm).next(Der::ObjectIdentifier, &content))
        return QCA::SignatureUnknown;
    const QByteArray oid = Der::oidText(content);
    for (const AlgorithmNumber &entry : Numbers) {
        if (oid == entry.oid)
            return entry.number;
    }
    return QCA::SignatureUnknown;
}

SignatureScheme signatureSchemeFor(int keyType, int bits, const QByteArray &spki)
{
    switch (keyType) {
    case RsaKey:
        return {"SHA256", identifier("1.2.840.113549.1.1.11", true)};
    case DsaKey:
        return {"SHA256", identifier("2.16.840.1.101.3.4.3.2")};
    case EllipticCurveKey:
        return curveScheme(bits);
    case Gost2001Key:
        return {"md_gost94", identifier("1.2.643.2.2.3")};
    case Gost2012Key256:
        return {"md_gost12_256", identifier("1.2.643.7.1.1.3.2")};
    case Gost2012Key512:
        return {"md_gost12_512", identifier("1.2.643.7.1.1.3.3")};
    case OtherKey:
        return edwardsScheme(spki);
    default:
        return {};
    }
}

} // namespace Trivex
