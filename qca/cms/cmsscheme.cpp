// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/cms/cmsscheme.h"

#include "qca/asn1/algorithmids.h"
#include "qca/asn1/derwriter.h"
#include "qca/keys/keymaterial.h"
#include "qca/keys/keytypes.h"
#include "qca/keys/psskeys.h"

namespace Trivex {

namespace {

/// The digests, and what a curve's signature is called with each (RFC 5758, 3.2).
struct Digest {
    const char *name;
    const char *oid;
    const char *curveSignature;
};

constexpr Digest Sha256 = {"SHA256", Oid::Sha256, Oid::EcdsaWithSha256};
constexpr Digest Sha384 = {"SHA384", Oid::Sha384, Oid::EcdsaWithSha384};
constexpr Digest Sha512 = {"SHA512", Oid::Sha512, Oid::EcdsaWithSha512};
constexpr Digest Gost94 = {"md_gost94", Oid::GostDigest94, nullptr};
constexpr Digest Streebog256 = {"md_gost12_256", Oid::GostDigest256, nullptr};
constexpr Digest Streebog512 = {"md_gost12_512", Oid::GostDigest512, nullptr};

QByteArray identifier(const char *oid, bool withNull = false)
{
    QList<QByteArray> parts = {Der::writeOid(oid)};
    if (withNull)
        parts += Der::write(Der::Null, {});
    return Der::writeSequence(parts);
}

CmsScheme scheme(const Digest &digest, const QByteArray &signature)
{
    return {digest.name, digest.name, identifier(digest.oid), signature};
}

const Digest &digestNamed(const QByteArray &name)
{
    return name == Sha256.name ? Sha256 : name == Sha384.name ? Sha384 : Sha512;
}

const Digest &curveDigest(int bits)
{
    return bits <= 256 ? Sha256 : bits <= 384 ? Sha384 : Sha512;
}

/// The scheme for a key whose kind only the key itself tells.
CmsScheme otherScheme(const KeyMaterial &key)
{
    const PssScheme pss = pssSchemeOf(key.publicInfo(), rsaDigestFor(key.bits()));
    if (pss.isValid())
        return scheme(digestNamed(pss.digest), pssAlgorithm(pss));
    if (!key.native() || !EVP_PKEY_is_a(key.native(), "ED25519"))
        return {};
    CmsScheme result = scheme(Sha512, identifier(Oid::Ed25519));
    result.keyDigest.clear();
    return result;
}

} // namespace

CmsScheme cmsSchemeFor(const QByteArray &publicInfo)
{
    const KeyMaterial key = KeyMaterial::fromPublicInfo(publicInfo);
    switch (key.keyType()) {
    case RsaKey:
        return scheme(digestNamed(rsaDigestFor(key.bits())), identifier(Oid::RsaEncryption, true));
    case DsaKey:
        return scheme(Sha256, identifier(Oid::DsaWithSha256));
    case EllipticCurveKey: {
        const Digest &digest = curveDigest(key.bits());
        return scheme(digest, identifier(digest.curveSignature));
    }
    case Gost2001Key:
        return scheme(Gost94, identifier(Oid::GostKey2001));
    case Gost2012Key256:
        return scheme(Streebog256, identifier(Oid::GostKey256));
    case Gost2012Key512:
        return scheme(Streebog512, identifier(Oid::GostKey512));
    case OtherKey:
        return otherScheme(key);
    default:
        return {};
    }
}

} // namespace Trivex
