// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/handles.h"
#include "qca/chains/chain.h"

#include <map>
#include <set>
#include <vector>

namespace Trivex {

/// The revocation lists of a check. Only those count that the issuer in the path has signed itself:
/// libcrypto would take the newest of a name and find out too late that anybody made it.
class Revocations {
public:
    explicit Revocations(const QVector<QByteArray> &lists);

    bool isEmpty() const { return m_lists.empty(); }
    /// Those of `name` that `issuer`, a certificate of the path, has signed; libcrypto's to free.
    STACK_OF(X509_CRL) * signedBy(X509 *issuer, const X509_NAME *name);
    /// There was one in that certificate's name that it has not signed.
    bool hasForeign(X509 *issuer) const { return m_foreign.count(issuer) > 0; }
    /// When `certificate` was revoked, and why, by the lists that counted so far; `at` is the date
    /// of the check.
    ChainFinding revoked(X509 *certificate, const QDateTime &at) const;

private:
    /// libcrypto forgets which list it was when that is out of date.
    X509_REVOKED *entryOf(X509 *certificate) const;
    bool isSignedBy(X509_CRL *list, X509 *issuer);

    std::vector<CrlHandle> m_lists;
    std::map<std::pair<X509_CRL *, X509 *>, bool> m_known;
    std::set<X509 *> m_foreign;
};

/// In UTC; invalid for null and for what is no date.
QDateTime dateOf(const ASN1_TIME *time);

} // namespace Trivex
