// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/handles.h"
#include "qca/chains/chain.h"
#include "qca/chains/issuance.h"

#include <vector>

namespace Trivex {

/// The certificates of a check as libcrypto's objects, in two stacks: those where a path may end,
/// and the rest. The rest is ordered: what is nearer to an anchor comes first, because libcrypto
/// takes the first issuer that fits and does not turn back where it leads nowhere.
class ChainMembers {
public:
    ChainMembers(const ChainInput &input, Issuance *issuance);

    /// Null when the checked certificate can't be read.
    X509 *certificate() const { return m_certificate.get(); }
    STACK_OF(X509) * anchors() const { return m_anchors.get(); }
    STACK_OF(X509) * others() const { return m_others.get(); }
    const std::vector<X509 *> &all() const { return m_all; }
    /// The candidate that a native object was made of; null for any other.
    const ChainCandidate *candidateOf(X509 *native) const;

private:
    struct Member {
        const ChainCandidate *candidate = nullptr;
        X509Handle native;
        int distance = 0; ///< steps to an anchor
    };

    void measure(Issuance *issuance);
    void fillStacks();

    X509Handle m_certificate;
    std::vector<Member> m_members;
    std::vector<X509 *> m_all;
    CertificateStack m_anchors;
    CertificateStack m_others;
};

} // namespace Trivex
