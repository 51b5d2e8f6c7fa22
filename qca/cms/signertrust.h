// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/chains/candidateindex.h"
#include "qca/cms/messagereport.h"

namespace Trivex {

/// Whether the signer is the person that the certificate names.
enum class SignerTrust {
    Trusted, ///< a path leads to a trusted root
    ExpiredSince, ///< so it was at the time that the signature states; the certificate has ended
                  ///< since
    NotValidThen, ///< at that time the certificate had ended already, or had not begun
    Unknown, ///< no path leads to a trusted root
    Revoked,
    Faulty, ///< the path breaks a rule, or the certificate is for something else than signing
    Expired, ///< it has ended, and the signature does not state its time
};

/// Checks the path of a signer's certificate for now, and for the time that the signature states.
/// `known` holds everything that may be part of it. One thread at a time for each index.
TRIVEX_QCA_EXPORT SignerTrust trustIn(const SignerReport &signer, const CandidateIndex &known);

} // namespace Trivex
