// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/issuersearch.h"

#include "qca/asn1/nativecoding.h"
#include "qca/base/bounds.h"
#include "qca/keys/keymaterial.h"
#include "qca/x509/certificatefields.h"

#include <QHash>

#include <utility>
#include <vector>

#include <openssl/err.h>

namespace Trivex {

namespace {

/// The hash of a name's canonical form (RFC 5280, 7.1); 0 for no name.
unsigned long hashOf(Der::Slice name)
{
    const auto native = decodeNative<NameHandle>(name, d2i_X509_NAME);
    int isGood = 0;
    const unsigned long hash =
        native ? X509_NAME_hash_ex(native.get(), nullptr, nullptr, &isGood) : 0;
    ERR_clear_error();
    return isGood ? hash : 0;
}

/// A certificate that may be an issuer, with libcrypto's object of it once it has been tried.
struct Candidate {
    CertificateDataPtr data;
    X509Handle native;
    KeyMaterial key;
    bool isParsed = false;
    bool isUsed = false;

    void parse()
    {
        if (std::exchange(isParsed, true))
            return;
        native = data->native();
        key = KeyMaterial::fromPublicInfo(data->publicInfo());
    }
};

/// Finds issuers by their names, so that only possible issuers are tried.
class IssuerSearch {
public:
    explicit IssuerSearch(const QList<CertificateDataPtr> &others)
    {
        for (const CertificateDataPtr &one : others) {
            CertificateFields fields;
            if (!one || !findCertificateFields(Der::sliceOf(one->der()), &fields))
                continue;
            m_bySubject[hashOf(fields.subject)].push_back(m_candidates.size());
            m_candidates.emplace_back();
            m_candidates.back().data = one;
        }
    }

    /// The issuer of `issued`; null when there is none. Later calls don't find it again.
    CertificateDataPtr takeIssuer(const CertificateData &issued)
    {
        CertificateFields fields;
        const X509Handle native = issued.native();
        if (!native || !findCertificateFields(Der::sliceOf(issued.der()), &fields))
            return nullptr;
        const std::vector<size_t> namesakes = m_bySubject.value(hashOf(fields.issuer));
        for (const size_t number : namesakes) {
            Candidate &candidate = m_candidates[number];
            if (!hasIssued(&candidate, fields, native.get()))
                continue;
            candidate.isUsed = true;
            return candidate.data;
        }
        return nullptr;
    }

    bool isExhausted() const { return m_checks > MaxIssuerChecks; }

private:
    bool hasIssued(Candidate *issuer, const CertificateFields &issued, X509 *native)
    {
        if (issuer->isUsed || isExhausted() || issuer->data->der() == issued.whole.view())
            return false;
        ++m_checks;
        issuer->parse();
        const bool fits =
            issuer->native && X509_check_issued(issuer->native.get(), native) == X509_V_OK;
        ERR_clear_error();
        // Several certificates may have the same name; the signature decides if it can be checked.
        return fits && checkSignature(issued, issuer->key) != SignatureState::Bad;
    }

    std::vector<Candidate> m_candidates;
    QHash<unsigned long, std::vector<size_t>> m_bySubject;
    int m_checks = 0;
};

} // namespace

std::optional<QList<CertificateDataPtr>> completeChain(const CertificateDataPtr &own,
                                                       const QList<CertificateDataPtr> &others)
{
    IssuerSearch search(others);
    QList<CertificateDataPtr> chain = {own};
    while (const CertificateDataPtr issuer = search.takeIssuer(*chain.last())) {
        if (chain.size() == MaxChainLength)
            return std::nullopt;
        chain += issuer;
    }
    return search.isExhausted() ? std::nullopt : std::make_optional(chain);
}

} // namespace Trivex
