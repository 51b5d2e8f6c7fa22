// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/cms/cmsscheme.h"

#include "qca/asn1/derwriter.h"
#include "qca/keys/keymaterial.h"
#include "qca/keys/keytypes.h"

namespace Trivex {

namespace {

/// The digests, and what a curve's signature is called with each (RFC 5758, 3.2).
struct Digest {
    const char *name;
    const char *oid;
    const char *curveSignature;
};

constexpr Digest Sha256 = {"SHA256", "2.16.840.1.101.3.4.2.1", "1.2.840.10045.4.3.2"};
constexpr Digest Sha384 = {"SHA384", "2.16.840.1.101.3.4.2.2", "1.2.840.10045.4.3.3"};
constexpr Digest Sha512 = {"SHA512", "2.16.840.1.101.3.4.2.3", "1.2.840.10045.4.3.4"};
constexpr Digest Gost94 = {"md_gost94", "1.2.643.2.2.9", nullptr};
constexpr Digest Streebog256 = {"md_gost12_256", "1.2.643.7.1.1.2.2", nullptr};
constexpr Digest Streebog512 = {"md_gost12_512", "1.2.643.7.1.1.2.3", nullptr};

constexpr char RsaSignature[] = "1.2.840.113549.1.1.1";
constexpr char DsaWithSha256[] = "2.16.840.1.101.3.4.3.2";
constexpr char Ed25519[] = "1.3.101.112";

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

const Digest &rsaDigest(int bits)
{
    return bits <= 3072 ? Sha256 : bits <= 7680 ? Sha384 : Sha512;
}

const Digest &curveDigest(int bits)
{
    return bits <= 256 ? Sha256 : bits <= 384 ? Sha384 : Sha512;
}

/// Only the key itself says which of these it is.
CmsScheme otherScheme(const KeyMaterial &key)
{
    if (!key.native() || !EVP_PKEY_is_a(key.native(), "ED25519"))
        return {};
    CmsScheme result = scheme(Sha512, identifier(Ed25519));
    result.keyDigest.clear();
    return result;
}

} // namespace

CmsScheme cmsSchemeFor(const QByteArray &publicInfo)
{
    const KeyMaterial key = KeyMaterial::fromPublicInfo(publicInfo);
    switch (key.keyType()) {
    case RsaKey:
        return scheme(rsaDigest(key.bits()), identifier(RsaSignature, true));
    case DsaKey:
        return scheme(Sha256, identifier(DsaWithSha256));
    case EllipticCurveKey: {
        const Digest &digest = curveDigest(key.bits());
        return scheme(digest, identifier(digest.curveSignature));
    }
    case Gost2001Key:
        return scheme(Gost94, identifier("1.2.643.2.2.19"));
    case Gost2012Key256:
        return scheme(Streebog256, identifier("1.2.643.7.1.1.1.1"));
    case Gost2012Key512:
        return scheme(Streebog512, identifier("1.2.643.7.1.1.1.2"));
    case OtherKey:
        return otherScheme(key);
    default:
        return {};
    }
}

} // namespace Trivex
