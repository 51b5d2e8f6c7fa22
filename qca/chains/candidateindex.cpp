// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/chains/candidateindex.h"

#include "qca/base/bounds.h"
#include "qca/chains/listreader.h"
#include "qca/x509/canonicalname.h"
#include "qca/x509/certificatefields.h"

#include <QSet>

#include <algorithm>

namespace Trivex {

namespace {

struct Names {
    QByteArray subject;
    QByteArray issuer;
};

bool readNames(const QByteArray &certificate, Names *names)
{
    CertificateFields fields;
    if (!findCertificateFields(Der::sliceOf(certificate), &fields))
        return false;
    names->subject = canonicalName(fields.subject);
    names->issuer = fields.issuer == fields.subject ? names->subject : canonicalName(fields.issuer);
    return true;
}

/// Gathers candidates, each once.
class Gathering {
public:
    explicit Gathering(ChainInput *input)
        : m_input(input)
    {
    }
    bool isFull() const { return m_input->candidates.size() >= MaxChainCandidates; }
    /// False for one that was there before.
    bool add(const ChainCandidate &candidate)
    {
        const auto known = m_rows.constFind(candidate.der);
        if (known == m_rows.constEnd()) {
            m_rows.insert(candidate.der, m_input->candidates.size());
            m_input->candidates += candidate;
            return true;
        }
        ChainCandidate &first = m_input->candidates[*known];
        if (candidate.isAnchor && !first.isAnchor)
            first = candidate;
        return false;
    }

private:
    ChainInput *m_input;
    QHash<QByteArray, int> m_rows;
};

QVector<ChainCandidate> anchorsFirst(QVector<ChainCandidate> candidates)
{
    std::stable_partition(candidates.begin(), candidates.end(),
                          [](const ChainCandidate &one) { return one.isAnchor; });
    return candidates.mid(0, MaxNamesakes);
}

} // namespace

void CandidateIndex::add(const ChainCandidate &candidate)
{
    Names names;
    if (readNames(candidate.der, &names))
        m_candidates[names.subject] += candidate;
}

void CandidateIndex::remove(const ChainCandidate &candidate)
{
    Names names;
    if (!readNames(candidate.der, &names))
        return;
    const auto found = m_candidates.find(names.subject);
    if (found == m_candidates.end())
        return;
    found->removeOne(candidate);
    if (found->isEmpty())
        m_candidates.erase(found);
}

void CandidateIndex::addList(const QByteArray &der)
{
    const QByteArray issuer = issuerOfList(der);
    if (!issuer.isEmpty() && !m_lists.value(issuer).contains(der))
        m_lists[issuer] += der;
}

ChainInput CandidateIndex::inputFor(const QByteArray &certificate, const CandidateIndex &more) const
{
    ChainInput input;
    input.certificate = certificate;
    Names own;
    if (!readNames(certificate, &own))
        return input;
    Gathering gathering(&input);
    const CandidateIndex *const indices[] = {this, &more};
    // The certificate itself says where it lies, and may be an anchor.
    for (const CandidateIndex *index : indices) {
        const auto namesakes = index->m_candidates.value(own.subject);
        for (const ChainCandidate &one : namesakes) {
            if (one.der == certificate)
                gathering.add(one);
        }
    }
    QVector<QByteArray> wanted = {own.issuer};
    QSet<QByteArray> seen = {own.issuer};
    for (int i = 0; i < wanted.size(); ++i) {
        const QByteArray name = wanted.at(i);
        for (const CandidateIndex *index : indices) {
            input.lists += index->m_lists.value(name);
            const auto issuers = anchorsFirst(index->m_candidates.value(name));
            for (const ChainCandidate &issuer : issuers) {
                Names names;
                if (gathering.isFull() || !gathering.add(issuer) || !readNames(issuer.der, &names)
                    || seen.contains(names.issuer))
                    continue;
                seen.insert(names.issuer);
                wanted += names.issuer;
            }
        }
    }
    return input;
}

} // namespace Trivex
