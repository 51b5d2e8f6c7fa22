// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"
#include "qca/chains/chain.h"

#include <QHash>

namespace Trivex {

/// Thousands of certificates and revocation lists by their names, so that the few that may matter
/// for one path are found at once. For one thread at a time.
class TRIVEX_QCA_EXPORT CandidateIndex {
public:
    /// Leaves out everything that is no certificate. The same one may lie in several places.
    void add(const ChainCandidate &candidate);
    /// Takes one of them out again.
    void remove(const ChainCandidate &candidate);
    /// Leaves out everything that is no revocation list.
    void addList(const QByteArray &der);
    void clearLists() { m_lists.clear(); }

    /// Everything that a check of `certificate` may need: issuers, theirs, and so on, by their
    /// names; the lists in their names. This index is asked before `more`, and anchors before
    /// others, because at most `MaxChainCandidates` are given.
    ChainInput inputFor(const QByteArray &certificate,
                        const CandidateIndex &more = CandidateIndex()) const;

private:
    QHash<QByteArray, QVector<ChainCandidate>> m_candidates; ///< by the subject
    QHash<QByteArray, QVector<QByteArray>> m_lists; ///< by the issuer
};

} // namespace Trivex
