// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/signaturealgorithms.h"

#include "qca/asn1/algorithmidentifier.h"
#include "qca/asn1/algorithmids.h"
#include "qca/keys/digests.h"
#include "qca/keys/keytypes.h"

namespace Trivex {

namespace {

struct AlgorithmNumber {
    const char *oid;
    QCA::SignatureAlgorithm number;
};

constexpr AlgorithmNumber Numbers[] = {
    {Oid::RsaWithSha256, QCA::EMSA3_SHA256},
    {Oid::RsaWithSha1, QCA::EMSA3_SHA1},
    {Oid::RsaWithSha384, QCA::EMSA3_SHA384},
    {Oid::RsaWithSha512, QCA::EMSA3_SHA512},
    {Oid::RsaWithSha224, QCA::EMSA3_SHA224},
    {Oid::RsaWithMd5, QCA::EMSA3_MD5},
    {Oid::RsaWithMd2, QCA::EMSA3_MD2},
    {Oid::RsaWithSha1Old, QCA::EMSA3_SHA1},
    {Oid::RsaWithRipemd160, QCA::EMSA3_RIPEMD160},
    {Oid::DsaWithSha1, QCA::EMSA1_SHA1},
};

SignatureScheme edwardsScheme(const QByteArray &spki)
{
    for (const char *oid : {Oid::Ed25519, Oid::Ed448}) {
        const QByteArray algorithm = algorithmIdentifier(oid);
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
        return {Sha256Digest.name,
                algorithmIdentifier(Oid::RsaWithSha256, AlgorithmParameters::Null)};
    case DsaKey:
        return {Sha256Digest.name, algorithmIdentifier(Oid::DsaWithSha256)};
    case EllipticCurveKey:
        return {curveDigestFor(bits).name,
                algorithmIdentifier(curveDigestFor(bits).curveSignature)};
    case Gost2001Key:
        return {Gost94Digest.name, algorithmIdentifier(Oid::GostSignature2001)};
    case Gost2012Key256:
        return {Streebog256Digest.name, algorithmIdentifier(Oid::GostSignature256)};
    case Gost2012Key512:
        return {Streebog512Digest.name, algorithmIdentifier(Oid::GostSignature512)};
    case OtherKey:
        return edwardsScheme(spki);
    default:
        return {};
    }
}

} // namespace Trivex
