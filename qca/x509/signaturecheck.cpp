// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/signaturecheck.h"

#include "qca/asn1/nativecoding.h"
#include "qca/keys/forgeablekey.h"
#include "qca/keys/keymaterial.h"

namespace Trivex {

SignatureState checkSignature(const CertificateFields &fields, Der::Slice publicInfo)
{
    // Also loads what GOST keys need.
    return checkSignature(fields, KeyMaterial::fromPublicInfo(publicInfo.bytes()));
}

SignatureState checkSignature(const CertificateFields &fields, const KeyMaterial &key)
{
    if (!key.native())
        return SignatureState::Unknown;
    // As "any type", which keeps a SEQUENCE as its octets.
    const auto body = decodeNative<Asn1TypeHandle>(fields.body.whole, d2i_ASN1_TYPE);
    const auto signature = decodeNative<StringHandle>(fields.signature.whole, d2i_ASN1_BIT_STRING);
    const auto algorithm = decodeNative<AlgorHandle>(fields.algorithm.whole, d2i_X509_ALGOR);
    const bool isGood = body && signature && algorithm
        && fields.innerAlgorithm == fields.algorithm.whole
        && ASN1_item_verify(ASN1_ITEM_rptr(ASN1_ANY), algorithm.get(), signature.get(), body.get(),
                            key.native())
            == 1;
    ERR_clear_error();
    if (!isGood)
        return SignatureState::Bad;
    return isForgeable(key.native()) ? SignatureState::Unknown : SignatureState::Good;
}

} // namespace Trivex
