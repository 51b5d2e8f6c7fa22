// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/chains/findings.h"

#include <algorithm>

#include <openssl/x509_vfy.h>

namespace Trivex {

namespace {

struct Weight {
    ChainReason reason;
    ChainVerdict verdict;
};

/// All others are bad.
constexpr Weight Weights[] = {
    {ChainReason::None, ChainVerdict::Good},
    {ChainReason::RevokedLater, ChainVerdict::Doubtful},
    {ChainReason::ListExpired, ChainVerdict::Doubtful},
    {ChainReason::ListNotYetValid, ChainVerdict::Doubtful},
    {ChainReason::ListNotSigned, ChainVerdict::Doubtful},
    {ChainReason::ListUnreadable, ChainVerdict::Doubtful},
    {ChainReason::AlgorithmUnknown, ChainVerdict::Unknown},
    {ChainReason::IssuerMissing, ChainVerdict::Unknown},
    {ChainReason::IssuerDiffers, ChainVerdict::Unknown},
};

struct Meaning {
    int error;
    ChainReason reason;
};

constexpr Meaning Meanings[] = {
    {X509_V_OK, ChainReason::None},
    // Certificates that the given lists don't cover are not checked against them. That is no
    // finding.
    {X509_V_ERR_UNABLE_TO_GET_CRL, ChainReason::None},
    {X509_V_ERR_UNABLE_TO_GET_CRL_ISSUER, ChainReason::None},
    {X509_V_ERR_DIFFERENT_CRL_SCOPE, ChainReason::None},
    // Follows a missing issuer, which is reported by itself.
    {X509_V_ERR_UNABLE_TO_VERIFY_LEAF_SIGNATURE, ChainReason::None},
    {X509_V_ERR_CERT_HAS_EXPIRED, ChainReason::Expired},
    {X509_V_ERR_CERT_NOT_YET_VALID, ChainReason::NotYetValid},
    {X509_V_ERR_CERT_REVOKED, ChainReason::Revoked},
    {X509_V_ERR_CRL_HAS_EXPIRED, ChainReason::ListExpired},
    {X509_V_ERR_CRL_NOT_YET_VALID, ChainReason::ListNotYetValid},
    {X509_V_ERR_CRL_SIGNATURE_FAILURE, ChainReason::ListNotSigned},
    {X509_V_ERR_UNABLE_TO_DECRYPT_CRL_SIGNATURE, ChainReason::ListNotSigned},
    {X509_V_ERR_CRL_PATH_VALIDATION_ERROR, ChainReason::ListNotSigned},
    {X509_V_ERR_KEYUSAGE_NO_CRL_SIGN, ChainReason::ListNotSigned},
    {X509_V_ERR_UNHANDLED_CRITICAL_CRL_EXTENSION, ChainReason::ListUnreadable},
    {X509_V_ERR_ERROR_IN_CRL_LAST_UPDATE_FIELD, ChainReason::ListUnreadable},
    {X509_V_ERR_ERROR_IN_CRL_NEXT_UPDATE_FIELD, ChainReason::ListUnreadable},
    {X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT, ChainReason::IssuerMissing},
    {X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT_LOCALLY, ChainReason::IssuerMissing},
    {X509_V_ERR_DEPTH_ZERO_SELF_SIGNED_CERT, ChainReason::SelfSigned},
    {X509_V_ERR_SELF_SIGNED_CERT_IN_CHAIN, ChainReason::RootNotTrusted},
    {X509_V_ERR_CERT_UNTRUSTED, ChainReason::RootNotTrusted},
    {X509_V_ERR_CERT_REJECTED, ChainReason::RootNotTrusted},
    {X509_V_ERR_CERT_SIGNATURE_FAILURE, ChainReason::WrongSignature},
    {X509_V_ERR_UNABLE_TO_DECRYPT_CERT_SIGNATURE, ChainReason::WrongSignature},
    {X509_V_ERR_SIGNATURE_ALGORITHM_MISMATCH, ChainReason::WrongSignature},
    {X509_V_ERR_CERT_SIGNATURE_FAILURE, ChainReason::WrongSignature},
    {X509_V_ERR_UNABLE_TO_DECODE_ISSUER_PUBLIC_KEY, ChainReason::AlgorithmUnknown},
    {X509_V_ERR_NO_ISSUER_PUBLIC_KEY, ChainReason::AlgorithmUnknown},
    {X509_V_ERR_UNSUPPORTED_SIGNATURE_ALGORITHM, ChainReason::AlgorithmUnknown},
    {X509_V_ERR_INVALID_CA, ChainReason::NotAuthority},
    {X509_V_ERR_KEYUSAGE_NO_CERTSIGN, ChainReason::NotAuthority},
    {X509_V_ERR_PATH_LENGTH_EXCEEDED, ChainReason::TooManyBelow},
    {X509_V_ERR_PERMITTED_VIOLATION, ChainReason::NameNotAllowed},
    {X509_V_ERR_EXCLUDED_VIOLATION, ChainReason::NameNotAllowed},
    {X509_V_ERR_SUBTREE_MINMAX, ChainReason::NameNotAllowed},
    {X509_V_ERR_UNSUPPORTED_CONSTRAINT_TYPE, ChainReason::NameNotAllowed},
    {X509_V_ERR_UNSUPPORTED_CONSTRAINT_SYNTAX, ChainReason::NameNotAllowed},
    {X509_V_ERR_UNSUPPORTED_NAME_SYNTAX, ChainReason::NameNotAllowed},
    {X509_V_ERR_INVALID_PURPOSE, ChainReason::WrongPurpose},
    {X509_V_ERR_EE_KEY_TOO_SMALL, ChainReason::WeakKey},
    {X509_V_ERR_CA_KEY_TOO_SMALL, ChainReason::WeakKey},
    {X509_V_ERR_CA_MD_TOO_WEAK, ChainReason::WeakSignature},
    {X509_V_ERR_UNHANDLED_CRITICAL_EXTENSION, ChainReason::UnknownExtension},
    {X509_V_ERR_CERT_CHAIN_TOO_LONG, ChainReason::TooLong},
    {X509_V_ERR_ERROR_IN_CERT_NOT_BEFORE_FIELD, ChainReason::Malformed},
    {X509_V_ERR_ERROR_IN_CERT_NOT_AFTER_FIELD, ChainReason::Malformed},
    {X509_V_ERR_INVALID_EXTENSION, ChainReason::Malformed},
    {X509_V_ERR_INVALID_NON_CA, ChainReason::Malformed},
    {X509_V_ERR_INVALID_POLICY_EXTENSION, ChainReason::Malformed},
};

} // namespace

ChainVerdict verdictOf(ChainReason reason)
{
    const auto *found = std::find_if(std::begin(Weights), std::end(Weights),
                                     [reason](const Weight &one) { return one.reason == reason; });
    return found == std::end(Weights) ? ChainVerdict::Bad : found->verdict;
}

ChainReason reasonOf(int error, int depth)
{
    const auto *found = std::find_if(std::begin(Meanings), std::end(Meanings),
                                     [error](const Meaning &one) { return one.error == error; });
    const ChainReason reason = found == std::end(Meanings) ? ChainReason::Other : found->reason;
    return reason == ChainReason::RootNotTrusted && depth == 0 ? ChainReason::SelfSigned : reason;
}

} // namespace Trivex
