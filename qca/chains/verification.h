// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/chains/issuance.h"
#include "qca/chains/members.h"
#include "qca/chains/revocations.h"

#include <QMap>

#include <vector>

namespace Trivex {

/// One run of libcrypto's verification, with every finding by its depth.
class Verification {
public:
    /// With `bySignature` only those count as issuers whose signatures are right; without, a path
    /// is followed by names, so that a wrong signature is found and not taken for a missing issuer.
    Verification(const ChainInput &input, const ChainMembers &members, Issuance *issuance,
                 bool bySignature);

    void run();

    /// From the checked certificate on; holds it at least.
    const std::vector<X509Handle> &path() const { return m_path; }
    QVector<ChainFinding> findings(int depth) const { return m_findings.value(depth); }
    bool has(ChainReason reason) const;
    /// A list of its issuer was there.
    bool isListed(int depth) const { return !m_lists.isEmpty() && !m_unlisted.contains(depth); }

private:
    static Verification *of(const X509_STORE_CTX *context);
    static int collect(int good, X509_STORE_CTX *context);
    static int hasIssued(X509_STORE_CTX *context, X509 *issued, X509 *issuer);
    static STACK_OF(X509_CRL) * listsOf(const X509_STORE_CTX *context, const X509_NAME *name);

    void setParameters(X509_VERIFY_PARAM *parameters) const;
    void noteError(X509_STORE_CTX *context);
    void takePath(X509_STORE_CTX *context);
    void add(int depth, const ChainFinding &finding);
    ChainFinding finding(int error, int depth, X509 *certificate, X509_CRL *list) const;
    void addOwnFindings();
    void forgetSignatureOfAnchor();
    void explainEnd(int error);

    const ChainInput &m_input;
    const ChainMembers &m_members;
    Issuance *m_issuance;
    const bool m_bySignature;
    const QDateTime m_date;
    Revocations m_lists;
    std::vector<X509Handle> m_path;
    QMap<int, QVector<ChainFinding>> m_findings;
    QVector<int> m_unlisted;
};

} // namespace Trivex
