// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/chains/members.h"

#include "qca/asn1/nativecoding.h"
#include "qca/base/bounds.h"
#include "qca/keys/gostengine.h"
#include "qca/x509/certificatefields.h"

#include <algorithm>
#include <climits>
#include <deque>

#include <openssl/err.h>

namespace Trivex {

namespace {

/// libcrypto reads the key together with the certificate, so the engine has to be there before.
void loadEngineFor(const QByteArray &der)
{
    CertificateFields fields;
    if (findCertificateFields(Der::sliceOf(der), &fields)
        && (mayMentionGost(fields.publicInfo.view())
            || mayMentionGost(fields.innerAlgorithm.view())))
        loadGostEngine();
}

X509Handle nativeOf(const QByteArray &der)
{
    loadEngineFor(der);
    // The shared data is not used: it has memory of QCA's, and this thread may outlive QCA.
    return der.size() > MaxCertificateBytes ? nullptr
                                            : decodeNative<X509Handle>(Der::sliceOf(der), d2i_X509);
}

void push(STACK_OF(X509) * stack, X509 *certificate)
{
    if (stack && X509_up_ref(certificate) == 1 && sk_X509_push(stack, certificate) <= 0)
        X509_free(certificate);
}

} // namespace

ChainMembers::ChainMembers(const ChainInput &input, Issuance *issuance)
    : m_certificate(nativeOf(input.certificate))
    , m_anchors(sk_X509_new_null())
    , m_others(sk_X509_new_null())
{
    if (!m_certificate)
        return;
    for (const ChainCandidate &candidate : input.candidates) {
        Member member;
        member.candidate = &candidate;
        // The same object, so that both are known to be one.
        member.native = candidate.der == input.certificate ? share(m_certificate.get())
                                                           : nativeOf(candidate.der);
        if (member.native && !candidateOf(member.native.get()))
            m_members.push_back(std::move(member));
    }
    measure(issuance);
    fillStacks();
}

const ChainCandidate *ChainMembers::candidateOf(X509 *native) const
{
    const auto found =
        std::find_if(m_members.begin(), m_members.end(),
                     [native](const Member &member) { return member.native.get() == native; });
    return found == m_members.end() ? nullptr : found->candidate;
}

void ChainMembers::measure(Issuance *issuance)
{
    std::deque<Member *> reached;
    for (Member &member : m_members) {
        member.distance = member.candidate->isAnchor ? 0 : INT_MAX;
        if (member.candidate->isAnchor)
            reached.push_back(&member);
    }
    while (!reached.empty()) {
        const Member *issuer = reached.front();
        reached.pop_front();
        for (Member &member : m_members) {
            if (member.distance != INT_MAX
                || !issuance->hasIssued(issuer->native.get(), member.native.get()))
                continue;
            member.distance = issuer->distance + 1;
            reached.push_back(&member);
        }
    }
    std::stable_sort(m_members.begin(), m_members.end(),
                     [](const Member &a, const Member &b) { return a.distance < b.distance; });
}

void ChainMembers::fillStacks()
{
    for (const Member &member : m_members) {
        push(member.candidate->isAnchor ? m_anchors.get() : m_others.get(), member.native.get());
        m_all.push_back(member.native.get());
    }
}

} // namespace Trivex
