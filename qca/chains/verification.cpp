// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/chains/verification.h"

#include "qca/base/bounds.h"
#include "qca/chains/findings.h"
#include "qca/keys/forgeablekey.h"

#include <algorithm>
#include <ctime>

#include <openssl/err.h>

namespace Trivex {

namespace {

/// 112 bits: RSA from 2048 bits on, SHA-224 and better.
constexpr int StrengthLevel = 2;

struct PurposeName {
    ChainPurpose purpose;
    int native;
};
constexpr PurposeName Purposes[] = {
    {ChainPurpose::WebServer, X509_PURPOSE_SSL_SERVER},
    {ChainPurpose::WebClient, X509_PURPOSE_SSL_CLIENT},
    {ChainPurpose::Email, X509_PURPOSE_SMIME_SIGN},
    {ChainPurpose::TimeStamps, X509_PURPOSE_TIMESTAMP_SIGN},
#ifdef X509_PURPOSE_CODE_SIGN
    {ChainPurpose::CodeSigning, X509_PURPOSE_CODE_SIGN},
#endif
};

/// The rule of libcrypto 3.2, which earlier ones lack (CA/Browser Forum, code signing, 7.1.2.3).
bool maySignCode(X509 *certificate)
{
    const quint32 uses = X509_get_key_usage(certificate);
    const quint32 purposes = X509_get_extended_key_usage(certificate);
    const quint32 flags = X509_get_extension_flags(certificate);
    const int at = X509_get_ext_by_NID(certificate, NID_key_usage, -1);
    return (flags & EXFLAG_KUSAGE) && (uses & KU_DIGITAL_SIGNATURE)
        && !(uses & (KU_KEY_CERT_SIGN | KU_CRL_SIGN)) && (flags & EXFLAG_XKUSAGE)
        && (purposes & XKU_CODE_SIGN) && !(purposes & (XKU_ANYEKU | XKU_SSL_SERVER)) && at >= 0
        && X509_EXTENSION_get_critical(X509_get_ext(certificate, at)) == 1;
}

/// libcrypto looks at what an authority is there for with servers, clients and mail, but not with
/// these.
struct AuthorityUse {
    ChainPurpose purpose;
    quint32 use;
};
constexpr AuthorityUse AuthorityUses[] = {
    {ChainPurpose::TimeStamps, XKU_TIMESTAMP},
    {ChainPurpose::CodeSigning, XKU_CODE_SIGN},
};

/// One that says nothing of it is there for everything.
bool mayIssueFor(ChainPurpose purpose, X509 *authority)
{
    if (!(X509_get_extension_flags(authority) & EXFLAG_XKUSAGE))
        return true;
    const quint32 uses = X509_get_extended_key_usage(authority);
    return std::none_of(std::begin(AuthorityUses), std::end(AuthorityUses),
                        [purpose, uses](const AuthorityUse &one) {
                            return one.purpose == purpose && !(uses & (one.use | XKU_ANYEKU));
                        });
}

bool isNative(ChainPurpose purpose)
{
    return std::any_of(std::begin(Purposes), std::end(Purposes),
                       [purpose](const PurposeName &one) { return one.purpose == purpose; });
}

/// libcrypto knows no strength of a key whose engine does not tell it.
bool isStrengthUnknown(X509 *certificate)
{
    EVP_PKEY *key = X509_get0_pubkey(certificate);
    return key && EVP_PKEY_get_security_bits(key) <= 0;
}

bool isStrengthOfSignatureUnknown(X509 *certificate)
{
    int bits = 0;
    return X509_get_signature_info(certificate, nullptr, nullptr, &bits, nullptr) != 1 || bits <= 0;
}

} // namespace

Verification::Verification(const ChainInput &input, const ChainMembers &members, Issuance *issuance,
                           bool bySignature)
    : m_input(input)
    , m_members(members)
    , m_issuance(issuance)
    , m_bySignature(bySignature)
    , m_date(input.date.isValid() ? input.date : QDateTime::currentDateTimeUtc())
    , m_lists(input.lists)
{
}

Verification *Verification::of(const X509_STORE_CTX *context)
{
    return static_cast<Verification *>(X509_STORE_CTX_get_ex_data(context, 0));
}

void Verification::run()
{
    const StoreHandle store(X509_STORE_new());
    const StoreContextHandle context(X509_STORE_CTX_new());
    m_path.push_back(share(m_members.certificate()));
    if (!store || !context)
        return;
    X509_STORE_set_check_issued(store.get(), &Verification::hasIssued);
    X509_STORE_set_lookup_crls(store.get(), &Verification::listsOf);
    if (X509_STORE_CTX_init(context.get(), store.get(), m_members.certificate(), m_members.others())
        == 1) {
        X509_STORE_CTX_set0_trusted_stack(context.get(), m_members.anchors());
        X509_STORE_CTX_set_ex_data(context.get(), 0, this);
        X509_STORE_CTX_set_verify_cb(context.get(), &Verification::collect);
        setParameters(X509_STORE_CTX_get0_param(context.get()));
        // Each error is let pass, so that only what libcrypto could not do at all ends it early.
        const bool isComplete = X509_verify_cert(context.get()) == 1;
        takePath(context.get());
        forgetSignatureOfAnchor();
        addOwnFindings();
        if (!isComplete)
            explainEnd(X509_STORE_CTX_get_error(context.get()));
    }
    ERR_clear_error();
}

void Verification::setParameters(X509_VERIFY_PARAM *parameters) const
{
    X509_VERIFY_PARAM_set_auth_level(parameters, StrengthLevel);
    X509_VERIFY_PARAM_set_depth(parameters, MaxChainLength - 2); // between both ends
    X509_VERIFY_PARAM_set_time(parameters, time_t(m_date.toSecsSinceEpoch()));
    unsigned long flags = X509_V_FLAG_CHECK_SS_SIGNATURE;
    if (!m_lists.isEmpty())
        flags |= X509_V_FLAG_CRL_CHECK | X509_V_FLAG_CRL_CHECK_ALL | X509_V_FLAG_USE_DELTAS;
    X509_VERIFY_PARAM_set_flags(parameters, flags);
    for (const PurposeName &one : Purposes) {
        if (one.purpose == m_input.purpose)
            X509_VERIFY_PARAM_set_purpose(parameters, one.native);
    }
}

int Verification::collect(int good, X509_STORE_CTX *context)
{
    Verification *self = of(context);
    if (!good)
        self->noteError(context);
    return self->m_issuance->isCancelled() ? 0 : 1;
}

int Verification::hasIssued(X509_STORE_CTX *context, X509 *issued, X509 *issuer)
{
    const Verification *self = of(context);
    const bool has = self->m_bySignature ? self->m_issuance->hasIssued(issuer, issued)
                                         : Issuance::mayHaveIssued(issuer, issued);
    return has ? 1 : 0;
}

STACK_OF(X509_CRL) * Verification::listsOf(const X509_STORE_CTX *context, const X509_NAME *name)
{
    STACK_OF(X509) *path = X509_STORE_CTX_get0_chain(context);
    // The issuer of the certificate in question: the next one, or the root itself.
    const int depth = std::min(X509_STORE_CTX_get_error_depth(context) + 1, sk_X509_num(path) - 1);
    return depth < 0 ? nullptr : of(context)->m_lists.signedBy(sk_X509_value(path, depth), name);
}

void Verification::noteError(X509_STORE_CTX *context)
{
    const int error = X509_STORE_CTX_get_error(context);
    const int depth = X509_STORE_CTX_get_error_depth(context);
    if (error == X509_V_ERR_UNABLE_TO_GET_CRL)
        m_unlisted += depth;
    X509 *certificate = X509_STORE_CTX_get_current_cert(context);
    if (certificate)
        add(depth, finding(error, depth, certificate, X509_STORE_CTX_get0_current_crl(context)));
}

ChainFinding Verification::finding(int error, int depth, X509 *certificate, X509_CRL *list) const
{
    ChainFinding found;
    found.code = error;
    found.reason = reasonOf(error, depth);
    switch (found.reason) {
    case ChainReason::Expired:
        found.date = dateOf(X509_get0_notAfter(certificate));
        break;
    case ChainReason::NotYetValid:
        found.date = dateOf(X509_get0_notBefore(certificate));
        break;
    case ChainReason::Revoked:
        return m_lists.revoked(certificate, m_date);
    case ChainReason::ListExpired:
        found.date = list ? dateOf(X509_CRL_get0_nextUpdate(list)) : QDateTime();
        break;
    case ChainReason::ListNotYetValid:
        // A list of today says more about an earlier date than none.
        if (m_input.date.isValid())
            found.reason = ChainReason::None;
        found.date = list ? dateOf(X509_CRL_get0_lastUpdate(list)) : QDateTime();
        break;
    case ChainReason::WrongSignature:
        if (!isSignatureKnown(certificate))
            found.reason = ChainReason::AlgorithmUnknown;
        break;
    case ChainReason::WeakKey:
        if (!X509_get0_pubkey(certificate) || isStrengthUnknown(certificate))
            found.reason = ChainReason::None;
        break;
    case ChainReason::WeakSignature:
        if (isStrengthOfSignatureUnknown(certificate))
            found.reason = ChainReason::None;
        break;
    default:
        break;
    }
    return found;
}

void Verification::add(int depth, const ChainFinding &finding)
{
    QVector<ChainFinding> &known = m_findings[depth];
    const bool isKnown =
        std::any_of(known.cbegin(), known.cend(),
                    [&finding](const ChainFinding &one) { return one.reason == finding.reason; });
    if (!isKnown && finding.reason != ChainReason::None)
        known += finding;
}

void Verification::takePath(X509_STORE_CTX *context)
{
    STACK_OF(X509) *path = X509_STORE_CTX_get0_chain(context);
    for (int i = 1; i < sk_X509_num(path); ++i)
        m_path.push_back(share(sk_X509_value(path, i)));
}

bool Verification::has(ChainReason reason) const
{
    for (const QVector<ChainFinding> &findings : m_findings) {
        for (const ChainFinding &one : findings) {
            if (one.reason == reason)
                return true;
        }
    }
    return false;
}

void Verification::addOwnFindings()
{
    const bool isForCode =
        m_input.purpose == ChainPurpose::CodeSigning && !isNative(m_input.purpose);
    if (isForCode && !maySignCode(m_path.front().get()))
        add(0, {ChainReason::WrongPurpose, X509_V_ERR_INVALID_PURPOSE, {}});
    for (size_t i = 0; i < m_path.size(); ++i) {
        const bool isLast = i + 1 == m_path.size();
        X509 *issuer = m_path[isLast ? i : i + 1].get();
        if (i > 0 && !mayIssueFor(m_input.purpose, m_path[i].get()))
            add(int(i), {ChainReason::WrongPurpose, X509_V_ERR_INVALID_PURPOSE, {}});
        if (isForgeable(X509_get0_pubkey(m_path[i].get())))
            add(int(i), {ChainReason::KeyOfAnybody, 0, {}});
        if (!isLast && !X509_get0_pubkey(issuer))
            add(int(i), {ChainReason::AlgorithmUnknown, X509_V_ERR_NO_ISSUER_PUBLIC_KEY, {}});
        if (m_lists.hasForeign(issuer) && !isListed(int(i)))
            add(int(i), {ChainReason::ListNotSigned, X509_V_ERR_CRL_SIGNATURE_FAILURE, {}});
    }
}

// A user who trusts a root has its key from the place where the root lies, so the root's own
// signature is not needed. If the root is not trusted, that signature tells a spoilt certificate.
void Verification::forgetSignatureOfAnchor()
{
    const ChainCandidate *last = m_members.candidateOf(m_path.back().get());
    if (!last || !last->isAnchor)
        return;
    QVector<ChainFinding> &known = m_findings[int(m_path.size()) - 1];
    const auto isOfSignature = [](const ChainFinding &one) {
        return one.reason == ChainReason::WrongSignature || one.reason == ChainReason::WeakSignature
            || one.reason == ChainReason::AlgorithmUnknown;
    };
    known.erase(std::remove_if(known.begin(), known.end(), isOfSignature), known.end());
}

// Then libcrypto has not looked at the dates either.
void Verification::explainEnd(int error)
{
    time_t at = time_t(m_date.toSecsSinceEpoch());
    for (size_t i = 0; i < m_path.size(); ++i) {
        X509 *one = m_path[i].get();
        if (X509_cmp_time(X509_get0_notAfter(one), &at) < 0)
            add(int(i), finding(X509_V_ERR_CERT_HAS_EXPIRED, int(i), one, nullptr));
        if (X509_cmp_time(X509_get0_notBefore(one), &at) > 0)
            add(int(i), finding(X509_V_ERR_CERT_NOT_YET_VALID, int(i), one, nullptr));
    }
    add(int(m_path.size()) - 1, {ChainReason::Other, error, {}});
}

} // namespace Trivex
