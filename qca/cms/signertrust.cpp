// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/cms/signertrust.h"

#include "qca/asn1/nativecoding.h"
#include "qca/chains/chaincheck.h"

#include <algorithm>

#include <openssl/x509v3.h>

namespace Trivex {

namespace {

struct Weight {
    ChainReason reason;
    SignerTrust trust;
};

/// Reasons that do not change the trust are not listed. Every other reason breaks a rule.
constexpr Weight Weights[] = {
    {ChainReason::None, SignerTrust::Trusted},
    {ChainReason::RevokedLater, SignerTrust::Trusted},
    {ChainReason::ListExpired, SignerTrust::Trusted},
    {ChainReason::ListNotYetValid, SignerTrust::Trusted},
    {ChainReason::ListNotSigned, SignerTrust::Trusted},
    {ChainReason::ListUnreadable, SignerTrust::Trusted},
    {ChainReason::Expired, SignerTrust::Expired},
    {ChainReason::NotYetValid, SignerTrust::NotValidThen},
    {ChainReason::IssuerMissing, SignerTrust::Unknown},
    {ChainReason::IssuerDiffers, SignerTrust::Unknown},
    {ChainReason::RootNotTrusted, SignerTrust::Unknown},
    {ChainReason::SelfSigned, SignerTrust::Unknown},
    {ChainReason::AlgorithmUnknown, SignerTrust::Unknown},
    {ChainReason::Revoked, SignerTrust::Revoked},
};

/// From the best to the worst.
constexpr SignerTrust ByGravity[] = {SignerTrust::Trusted, SignerTrust::ExpiredSince,
                                     SignerTrust::Expired, SignerTrust::NotValidThen,
                                     SignerTrust::Unknown, SignerTrust::Faulty,
                                     SignerTrust::Revoked};

SignerTrust worseOf(SignerTrust a, SignerTrust b)
{
    const auto *const end = std::end(ByGravity);
    const bool isWorse =
        std::find(std::begin(ByGravity), end, a) > std::find(std::begin(ByGravity), end, b);
    return isWorse ? a : b;
}

SignerTrust trustFor(ChainReason reason)
{
    const auto *found = std::find_if(std::begin(Weights), std::end(Weights),
                                     [reason](const Weight &one) { return one.reason == reason; });
    return found == std::end(Weights) ? SignerTrust::Faulty : found->trust;
}

SignerTrust trustOf(const ChainResult &result)
{
    SignerTrust trust = result.steps.isEmpty() ? SignerTrust::Faulty : SignerTrust::Trusted;
    for (const ChainStep &step : result.steps) {
        for (const ChainFinding &finding : step.findings)
            trust = worseOf(trust, trustFor(finding.reason));
    }
    // Nothing may be called trusted that has no finding and no end, either.
    if (trust == SignerTrust::Trusted && !result.steps.last().isAnchor)
        return SignerTrust::Unknown;
    return trust;
}

/// Whether the certificate is for signing: a key usage (RFC 5280, 4.2.1.3) that allows neither kind
/// of signature is for something else. Without one it is for everything.
SignerTrust trustForUsage(const QByteArray &der)
{
    const auto certificate = decodeNative<X509Handle>(Der::sliceOf(der), d2i_X509);
    constexpr quint32 Signing = KU_DIGITAL_SIGNATURE | KU_NON_REPUDIATION;
    const bool signs = certificate && (X509_get_key_usage(certificate.get()) & Signing) != 0;
    ERR_clear_error();
    return signs ? SignerTrust::Trusted : SignerTrust::Faulty;
}

bool isOutOfTime(SignerTrust trust)
{
    return trust == SignerTrust::Expired || trust == SignerTrust::NotValidThen;
}

SignerTrust pathTrust(const SignerReport &signer, const CandidateIndex &known)
{
    ChainInput input = known.inputFor(signer.certificate);
    const SignerTrust now = trustOf(checkChain(input));
    // Nothing says that a certificate that has ended had ended when it signed.
    if (!signer.time.isValid())
        return now;
    input.date = signer.time;
    const SignerTrust then = trustOf(checkChain(input));
    if (now == SignerTrust::Expired)
        return then == SignerTrust::Trusted ? SignerTrust::ExpiredSince : SignerTrust::NotValidThen;
    // Valid now, and by the signature's own word not when it was made.
    if (now == SignerTrust::Trusted && isOutOfTime(then))
        return SignerTrust::NotValidThen;
    return now;
}

} // namespace

SignerTrust trustIn(const SignerReport &signer, const CandidateIndex &known)
{
    return worseOf(pathTrust(signer, known), trustForUsage(signer.certificate));
}

} // namespace Trivex
