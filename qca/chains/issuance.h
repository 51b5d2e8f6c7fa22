// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/handles.h"

#include <atomic>
#include <map>
#include <utility>

namespace Trivex {

/// Which certificate has issued which, asked of libcrypto: names, key identifiers and signatures.
/// Each answer is kept, because the search for a path tries several ways. At most `MaxIssuerChecks`
/// signatures are computed; after that a name is taken for an issuer, and the check of the path
/// itself decides.
class Issuance {
public:
    /// `isCancelled` becomes true when no answer is wanted any more; it outlives this.
    explicit Issuance(const std::atomic<bool> *isCancelled)
        : m_isCancelled(isCancelled)
    {
    }

    /// Whether the names and identifiers fit, and the signature, where it can be checked.
    bool hasIssued(X509 *issuer, X509 *issued);
    /// The names and identifiers alone.
    static bool mayHaveIssued(X509 *issuer, X509 *issued);
    bool isCancelled() const { return *m_isCancelled; }

private:
    bool compute(X509 *issuer, X509 *issued);

    const std::atomic<bool> *m_isCancelled;
    std::map<std::pair<X509 *, X509 *>, bool> m_known;
    int m_checks = 0;
};

/// Whether libcrypto knows the algorithm that this certificate was signed with.
bool isSignatureKnown(X509 *certificate);

} // namespace Trivex
