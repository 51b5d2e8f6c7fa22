// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/chains/chaincheck.h"

#include "qca/asn1/nativecoding.h"
#include "qca/base/bounds.h"
#include "qca/base/libcrypto.h"
#include "qca/chains/findings.h"
#include "qca/chains/verification.h"

#include <algorithm>

namespace Trivex {

namespace {

QString entryOf(const X509_NAME *name, int nid)
{
    int last = -1;
    for (int at = -1; (at = X509_NAME_get_index_by_NID(name, nid, at)) >= 0;)
        last = at;
    if (last < 0)
        return {};
    unsigned char *text = nullptr;
    const int size =
        ASN1_STRING_to_UTF8(&text, X509_NAME_ENTRY_get_data(X509_NAME_get_entry(name, last)));
    const QString result =
        size > 0 ? QString::fromUtf8(reinterpret_cast<const char *>(text), size) : QString();
    OPENSSL_free(text);
    return result;
}

QString wholeName(const X509_NAME *name)
{
    const BioHandle out(BIO_new(BIO_s_mem()));
    if (!out || X509_NAME_print_ex(out.get(), name, 0, XN_FLAG_ONELINE & ~ASN1_STRFLGS_ESC_MSB) < 0)
        return {};
    const char *text = nullptr;
    const long size = BIO_get_mem_data(out.get(), &text);
    return QString::fromUtf8(text, int(size));
}

QString nameText(const X509_NAME *name)
{
    for (const int nid : {NID_commonName, NID_organizationName}) {
        const QString text = entryOf(name, nid);
        if (!text.trimmed().isEmpty())
            return text;
    }
    return wholeName(name);
}

/// A step of the path without a verdict.
ChainStep stepOf(X509 *certificate, const ChainMembers &members)
{
    ChainStep step;
    if (const ChainCandidate *candidate = members.candidateOf(certificate)) {
        step.der = candidate->der;
        step.place = candidate->place;
        step.isAnchor = candidate->isAnchor;
    } else {
        step.der = encodeNative(certificate, i2d_X509);
    }
    step.subject = nameText(X509_get_subject_name(certificate));
    step.issuer = nameText(X509_get_issuer_name(certificate));
    return step;
}

void judge(ChainStep *step)
{
    const auto isGraver = [](const ChainFinding &a, const ChainFinding &b) {
        return verdictOf(a.reason) > verdictOf(b.reason);
    };
    std::stable_sort(step->findings.begin(), step->findings.end(), isGraver);
    step->verdict = step->findings.isEmpty() ? ChainVerdict::Good
                                             : verdictOf(step->findings.constFirst().reason);
}

bool hasName(X509 *certificate, const X509_NAME *name)
{
    return X509_NAME_cmp(X509_get_subject_name(certificate), name) == 0;
}

/// Follows the names on where the keys can't be read here, so that the path is shown all the same.
class NamesOnly {
public:
    NamesOnly(const ChainMembers &members, ChainResult *result)
        : m_members(members)
        , m_result(result)
    {
    }

    void follow(X509 *last)
    {
        while (m_result->steps.size() < MaxChainLength) {
            ChainStep &step = m_result->steps.last();
            if (hasName(last, X509_get_issuer_name(last))) {
                endAt(&step);
                return;
            }
            X509 *issuer = unreadableIssuer(last);
            if (!issuer) {
                explain(last, &step);
                return;
            }
            replaceMissing(&step, ChainReason::AlgorithmUnknown);
            m_result->steps += stepOf(issuer, m_members);
            m_used.push_back(issuer);
            last = issuer;
        }
    }

private:
    X509 *unreadableIssuer(X509 *issued) const
    {
        for (X509 *one : m_members.all()) {
            if (!X509_get0_pubkey(one) && Issuance::mayHaveIssued(one, issued)
                && std::find(m_used.begin(), m_used.end(), one) == m_used.end())
                return one;
        }
        return nullptr;
    }
    /// The path ends at a certificate in its own name. A trusted one needs no signature of its own.
    static void endAt(ChainStep *step)
    {
        if (step->isAnchor)
            removeMissing(step);
        else
            replaceMissing(step, ChainReason::RootNotTrusted);
    }
    void explain(X509 *last, ChainStep *step) const
    {
        const X509_NAME *name = X509_get_issuer_name(last);
        const bool isThere = std::any_of(m_members.all().begin(), m_members.all().end(),
                                         [name](X509 *one) { return hasName(one, name); });
        replaceMissing(step, isThere ? ChainReason::IssuerDiffers : ChainReason::IssuerMissing);
    }
    static void removeMissing(ChainStep *step)
    {
        QVector<ChainFinding> &findings = step->findings;
        findings.erase(std::remove_if(findings.begin(), findings.end(),
                                      [](const ChainFinding &one) {
                                          return one.reason == ChainReason::IssuerMissing
                                              || one.reason == ChainReason::Other;
                                      }),
                       findings.end());
    }
    static void replaceMissing(ChainStep *step, ChainReason reason)
    {
        removeMissing(step);
        const bool isKnown =
            std::any_of(step->findings.cbegin(), step->findings.cend(),
                        [reason](const ChainFinding &one) { return one.reason == reason; });
        if (!isKnown)
            step->findings += {reason, X509_V_ERR_UNABLE_TO_GET_ISSUER_CERT_LOCALLY, {}};
    }

    const ChainMembers &m_members;
    ChainResult *m_result;
    std::vector<X509 *> m_used;
};

ChainResult resultOf(const Verification &verification, const ChainMembers &members)
{
    ChainResult result;
    int depth = 0;
    for (const X509Handle &certificate : verification.path()) {
        ChainStep step = stepOf(certificate.get(), members);
        step.findings = verification.findings(depth);
        step.isListed = verification.isListed(depth);
        result.steps += step;
        ++depth;
    }
    if (verification.has(ChainReason::IssuerMissing) || verification.has(ChainReason::Other))
        NamesOnly(members, &result).follow(verification.path().back().get());
    // A path that ends anywhere else is not good, whatever the reason.
    const bool isComplaint =
        std::any_of(result.steps.cbegin(), result.steps.cend(), [](const ChainStep &step) {
            return std::any_of(step.findings.cbegin(), step.findings.cend(),
                               [](const ChainFinding &one) {
                                   return verdictOf(one.reason) > ChainVerdict::Doubtful;
                               });
        });
    if (!isComplaint && !result.steps.constLast().isAnchor)
        result.steps.last().findings += {ChainReason::Other, 0, {}};
    result.verdict = ChainVerdict::Good;
    for (ChainStep &step : result.steps) {
        judge(&step);
        result.verdict = std::max(result.verdict, step.verdict);
    }
    return result;
}

/// The one way through the candidates that libcrypto takes.
ChainResult checkOneWay(const ChainInput &input, const std::atomic<bool> &isCancelled)
{
    Issuance issuance(&isCancelled);
    const ChainMembers members(input, &issuance);
    if (!members.certificate())
        return {};
    Verification strict(input, members, &issuance, true);
    strict.run();
    if (!strict.has(ChainReason::IssuerMissing))
        return resultOf(strict, members);
    Verification byName(input, members, &issuance, false);
    byName.run();
    return resultOf(byName.path().size() > strict.path().size() ? byName : strict, members);
}

/// An issuer between both ends because of which the path is bad; null where there is none.
const ChainStep *badIssuer(const ChainResult &result)
{
    const auto found =
        std::find_if(result.steps.cbegin(), result.steps.cend(), [&result](const ChainStep &step) {
            return &step != &result.steps.constFirst() && !step.isAnchor
                && step.verdict == ChainVerdict::Bad;
        });
    return found == result.steps.cend() ? nullptr : &*found;
}

/// A few are enough: an authority has hardly more certificates of one key.
constexpr int MostDetours = 3;

} // namespace

ChainResult checkChain(const ChainInput &input, const std::atomic<bool> &isCancelled)
{
    initialiseLibcrypto();
    const ChainResult direct = checkOneWay(input, isCancelled);
    ChainResult last = direct;
    ChainInput rest = input;
    for (int i = 0; i < MostDetours && last.verdict == ChainVerdict::Bad && !isCancelled; ++i) {
        const ChainStep *bad = badIssuer(last);
        if (!bad)
            break;
        const auto isBad = [der = bad->der](const ChainCandidate &one) { return one.der == der; };
        rest.candidates.erase(std::remove_if(rest.candidates.begin(), rest.candidates.end(), isBad),
                              rest.candidates.end());
        last = checkOneWay(rest, isCancelled);
    }
    // A way that ends nowhere is no better than a bad one: what is bad about that would be hidden.
    return last.verdict <= ChainVerdict::Doubtful ? last : direct;
}

ChainResult checkChain(const ChainInput &input)
{
    const std::atomic<bool> never{false};
    return checkChain(input, never);
}

} // namespace Trivex
