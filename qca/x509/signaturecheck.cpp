// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/signaturecheck.h"

#include "qca/keys/keymaterial.h"

#include <openssl/err.h>

namespace Trivex {

namespace {

template <class T, class Parse> T *parse(Der::Slice slice, Parse function)
{
    const auto *data = reinterpret_cast<const unsigned char *>(slice.data);
    return function(nullptr, &data, slice.size);
}

} // namespace

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
    const Asn1TypeHandle body(parse<ASN1_TYPE>(fields.body, &d2i_ASN1_TYPE));
    const StringHandle signature(
        parse<ASN1_BIT_STRING>(fields.wholeSignature, &d2i_ASN1_BIT_STRING));
    const AlgorHandle algorithm(parse<X509_ALGOR>(fields.wholeAlgorithm, &d2i_X509_ALGOR));
    const bool isGood = body && signature && algorithm
        && fields.innerAlgorithm == fields.wholeAlgorithm
        && ASN1_item_verify(ASN1_ITEM_rptr(ASN1_ANY), algorithm.get(), signature.get(), body.get(),
                            key.native())
            == 1;
    ERR_clear_error();
    return isGood ? SignatureState::Good : SignatureState::Bad;
}

} // namespace Trivex
