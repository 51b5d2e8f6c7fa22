// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/cms/cmsscheme.h"

#include "qca/asn1/algorithmidentifier.h"
#include "qca/keys/keymaterial.h"
#include "qca/keys/keytypes.h"
#include "qca/keys/psskeys.h"

namespace Trivex {

namespace {

CmsScheme scheme(const Digest &digest, const QByteArray &signature)
{
    return {digest.name, digest.name, algorithmIdentifier(digest.oid), signature};
}

/// The scheme for a key whose kind only the key itself tells.
CmsScheme otherScheme(const KeyMaterial &key)
{
    const PssScheme pss = pssSchemeOf(key.publicInfo(), rsaDigestFor(key.bits()));
    if (pss.isValid())
        return scheme(*pss.digest, pssAlgorithm(pss));
    if (!key.native() || !EVP_PKEY_is_a(key.native(), "ED25519"))
        return {};
    CmsScheme result = scheme(Sha512Digest, algorithmIdentifier(Oid::Ed25519));
    result.keyDigest.clear();
    return result;
}

} // namespace

CmsScheme cmsSchemeFor(const QByteArray &publicInfo)
{
    const KeyMaterial key = KeyMaterial::fromPublicInfo(publicInfo);
    switch (key.keyType()) {
    case RsaKey:
        return scheme(rsaDigestFor(key.bits()),
                      algorithmIdentifier(Oid::RsaEncryption, AlgorithmParameters::Null));
    case DsaKey:
        return scheme(Sha256Digest, algorithmIdentifier(Oid::DsaWithSha256));
    case EllipticCurveKey: {
        const Digest &digest = curveDigestFor(key.bits());
        return scheme(digest, algorithmIdentifier(digest.curveSignature));
    }
    case Gost2001Key:
        return scheme(Gost94Digest, algorithmIdentifier(Oid::GostKey2001));
    case Gost2012Key256:
        return scheme(Streebog256Digest, algorithmIdentifier(Oid::GostKey256));
    case Gost2012Key512:
        return scheme(Streebog512Digest, algorithmIdentifier(Oid::GostKey512));
    case OtherKey:
        return otherScheme(key);
    default:
        return {};
    }
}

} // namespace Trivex
