// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/cms/signingcertificate.h"

#include "qca/asn1/handles.h"
#include "qca/asn1/nativecoding.h"

#include <openssl/err.h>
#include <openssl/ess.h>

namespace Trivex {

namespace {

using FirstVersion = Handle<ESS_SIGNING_CERT, ESS_SIGNING_CERT_free>;
using SecondVersion = Handle<ESS_SIGNING_CERT_V2, ESS_SIGNING_CERT_V2_free>;

/// The one value of that attribute; null where there is none.
const ASN1_STRING *valueOf(CMS_SignerInfo *signer, int type)
{
    const auto *value = static_cast<const ASN1_STRING *>(
        CMS_signed_get0_data_by_OBJ(signer, OBJ_nid2obj(type), -3, V_ASN1_SEQUENCE));
    ERR_clear_error();
    return value;
}

Der::Slice sliceOf(const ASN1_STRING *string)
{
    return {reinterpret_cast<const char *>(ASN1_STRING_get0_data(string)),
            ASN1_STRING_length(string)};
}

} // namespace

bool namesSigningCertificate(CMS_SignerInfo *signer)
{
    return CMS_signed_get_attr_by_NID(signer, NID_id_smime_aa_signingCertificate, -1) >= 0
        || CMS_signed_get_attr_by_NID(signer, NID_id_smime_aa_signingCertificateV2, -1) >= 0;
}

bool isSigningCertificate(CMS_SignerInfo *signer, X509 *certificate)
{
    if (!namesSigningCertificate(signer))
        return true;
    const ASN1_STRING *first = valueOf(signer, NID_id_smime_aa_signingCertificate);
    const ASN1_STRING *second = valueOf(signer, NID_id_smime_aa_signingCertificateV2);
    FirstVersion firstVersion;
    SecondVersion secondVersion;
    if (first)
        firstVersion = decodeNative<FirstVersion>(sliceOf(first), d2i_ESS_SIGNING_CERT);
    if (second)
        secondVersion = decodeNative<SecondVersion>(sliceOf(second), d2i_ESS_SIGNING_CERT_V2);
    // One that can't be read names nothing.
    if ((first && !firstVersion) || (second && !secondVersion) || (!first && !second))
        return false;
    const CertificateStack chain(sk_X509_new_null());
    X509Handle member = share(certificate);
    if (!chain || sk_X509_push(chain.get(), member.get()) <= 0)
        return false;
    static_cast<void>(member.release());
    const bool names =
        OSSL_ESS_check_signing_certs(firstVersion.get(), secondVersion.get(), chain.get(), 1) == 1;
    ERR_clear_error();
    return names;
}

} // namespace Trivex
