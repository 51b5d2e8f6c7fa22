// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/chains/revocations.h"

#include "qca/asn1/nativecoding.h"

namespace Trivex {

Revocations::Revocations(const QVector<QByteArray> &lists)
{
    for (const QByteArray &der : lists) {
        CrlHandle list = decodeNative<CrlHandle>(Der::sliceOf(der), d2i_X509_CRL);
        if (list)
            m_lists.push_back(std::move(list));
    }
}

bool Revocations::isSignedBy(X509_CRL *list, X509 *issuer)
{
    const auto known = m_known.find({list, issuer});
    if (known != m_known.end())
        return known->second;
    EVP_PKEY *key = X509_get0_pubkey(issuer);
    const bool isSigned = key && X509_CRL_verify(list, key) == 1;
    ERR_clear_error();
    m_known[{list, issuer}] = isSigned;
    if (!isSigned)
        m_foreign.insert(issuer);
    return isSigned;
}

STACK_OF(X509_CRL) * Revocations::signedBy(X509 *issuer, const X509_NAME *name)
{
    STACK_OF(X509_CRL) *found = sk_X509_CRL_new_null();
    for (const CrlHandle &list : m_lists) {
        if (!found || X509_NAME_cmp(X509_CRL_get_issuer(list.get()), name) != 0
            || !isSignedBy(list.get(), issuer))
            continue;
        if (X509_CRL_up_ref(list.get()) == 1 && sk_X509_CRL_push(found, list.get()) == 0)
            X509_CRL_free(list.get());
    }
    return found;
}

X509_REVOKED *Revocations::entryOf(X509 *certificate) const
{
    for (const auto &known : m_known) {
        X509_REVOKED *entry = nullptr;
        X509_CRL *list = known.first.first;
        const bool isOfIssuer = known.second
            && X509_NAME_cmp(X509_CRL_get_issuer(list), X509_get_issuer_name(certificate)) == 0;
        if (isOfIssuer && X509_CRL_get0_by_cert(list, &entry, certificate) != 0 && entry)
            return entry;
    }
    return nullptr;
}

ChainFinding Revocations::revoked(X509 *certificate, const QDateTime &at) const
{
    ChainFinding finding;
    finding.reason = ChainReason::Revoked;
    finding.code = X509_V_ERR_CERT_REVOKED;
    X509_REVOKED *entry = entryOf(certificate);
    if (!entry)
        return finding;
    finding.date = dateOf(X509_REVOKED_get0_revocationDate(entry));
    const Handle<ASN1_ENUMERATED, ASN1_ENUMERATED_free> reason(static_cast<ASN1_ENUMERATED *>(
        X509_REVOKED_get_ext_d2i(entry, NID_crl_reason, nullptr, nullptr)));
    if (reason)
        finding.revocation = int(ASN1_ENUMERATED_get(reason.get()));
    if (finding.date.isValid() && finding.date > at)
        finding.reason = ChainReason::RevokedLater;
    return finding;
}

QDateTime dateOf(const ASN1_TIME *time)
{
    struct tm parts = {};
    if (!time || ASN1_TIME_to_tm(time, &parts) != 1)
        return {};
    return QDateTime(QDate(parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday),
                     QTime(parts.tm_hour, parts.tm_min, parts.tm_sec), Qt::UTC);
}

} // namespace Trivex
