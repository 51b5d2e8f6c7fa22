// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/chains/issuance.h"

#include "qca/base/bounds.h"

#include <openssl/err.h>

namespace Trivex {

bool Issuance::mayHaveIssued(X509 *issuer, X509 *issued)
{
    switch (X509_check_issued(issuer, issued)) {
    case X509_V_OK:
    case X509_V_ERR_KEYUSAGE_NO_CERTSIGN: // a finding of the path
    case X509_V_ERR_NO_ISSUER_PUBLIC_KEY: // likewise: here it can't be read
        return true;
    default:
        return false;
    }
}

bool Issuance::hasIssued(X509 *issuer, X509 *issued)
{
    const auto known = m_known.find({issuer, issued});
    if (known != m_known.end())
        return known->second;
    const bool result = compute(issuer, issued);
    ERR_clear_error();
    m_known[{issuer, issued}] = result;
    return result;
}

bool Issuance::compute(X509 *issuer, X509 *issued)
{
    if (isCancelled() || !mayHaveIssued(issuer, issued))
        return false;
    EVP_PKEY *key = X509_get0_pubkey(issuer);
    if (!key || !isSignatureKnown(issued) || ++m_checks > MaxIssuerChecks)
        return true;
    return X509_verify(issued, key) == 1;
}

bool isSignatureKnown(X509 *certificate)
{
    int digest = NID_undef;
    int key = NID_undef;
    const bool isFound =
        OBJ_find_sigid_algs(X509_get_signature_nid(certificate), &digest, &key) == 1;
    // Some have no digest of their own (Ed25519), or name it among their parameters (PSS).
    return isFound && (digest == NID_undef || EVP_get_digestbynid(digest));
}

} // namespace Trivex
