// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/cms/messagecheck.h"

#include "qca/asn1/nativecoding.h"
#include "qca/base/bounds.h"
#include "qca/cms/signercheck.h"
#include "qca/keys/gostengine.h"

#include <openssl/err.h>

#include <algorithm>
#include <vector>

namespace Trivex {

namespace {

/// Owns a chain of filters: the references to them are in the chain itself.
using FilterChain = BioHandle;

/// More signers than any document has: each costs a digest of the whole document at worst.
constexpr int MostSigners = 100;

std::vector<SignerCheck> signersOf(CMS_ContentInfo *message)
{
    std::vector<SignerCheck> checks;
    STACK_OF(CMS_SignerInfo) *const signers = CMS_get0_SignerInfos(message);
    for (int i = 0; i < sk_CMS_SignerInfo_num(signers) && i < MostSigners; ++i)
        checks.emplace_back(sk_CMS_SignerInfo_value(signers, i));
    return checks;
}

/// One filter for each digest that a signer needs; the document is written into the first.
FilterChain filtersFor(const std::vector<SignerCheck> &checks)
{
    FilterChain chain(BIO_new(BIO_s_null()));
    std::vector<const EVP_MD *> digests;
    for (const SignerCheck &check : checks) {
        const EVP_MD *digest = check.digest();
        if (!digest || std::find(digests.begin(), digests.end(), digest) != digests.end())
            continue;
        BioHandle filter(BIO_new(BIO_f_md()));
        if (!filter || BIO_set_md(filter.get(), digest) <= 0)
            continue;
        digests.push_back(digest);
        chain.reset(BIO_push(filter.release(), chain.release()));
    }
    ERR_clear_error();
    return chain;
}

CertificateStack certificatesOf(CMS_ContentInfo *message, const QList<QByteArray> &known,
                                MessageReport *report)
{
    CertificateStack all(CMS_get1_certs(message));
    if (!all)
        all.reset(sk_X509_new_null());
    for (int i = 0; i < sk_X509_num(all.get()); ++i)
        report->certificates += encodeNative(sk_X509_value(all.get(), i), i2d_X509);
    for (const QByteArray &der : known) {
        X509Handle certificate = decodeNative<X509Handle>(Der::sliceOf(der), d2i_X509);
        if (certificate && sk_X509_push(all.get(), certificate.get()) > 0)
            static_cast<void>(certificate.release());
    }
    STACK_OF(X509_CRL) *const lists = CMS_get1_crls(message);
    for (int i = 0; i < sk_X509_CRL_num(lists); ++i)
        report->lists += encodeNative(sk_X509_CRL_value(lists, i), i2d_X509_CRL);
    sk_X509_CRL_pop_free(lists, X509_CRL_free);
    ERR_clear_error();
    return all;
}

MessageReport::Problem problemOf(ReadResult result)
{
    switch (result) {
    case ReadResult::Done:
        return MessageReport::NoProblem;
    case ReadResult::Cancelled:
        return MessageReport::Cancelled;
    case ReadResult::Changed:
        return MessageReport::Changed;
    default:
        return MessageReport::DocumentUnreadable;
    }
}

MessageReport failed(MessageReport::Problem problem)
{
    MessageReport report;
    report.problem = problem;
    return report;
}

} // namespace

MessageReport checkMessage(const SignedMessage &message, const Content &outside,
                           const QList<QByteArray> &known, LongWork &work)
{
    // Before anything is decoded: keys get their kind then.
    if (mayMentionGost(message.skeleton))
        loadGostEngine();
    const auto native =
        decodeNative<CmsHandle>(Der::sliceOf(message.skeleton), d2i_CMS_ContentInfo);
    if (!native || OBJ_obj2nid(CMS_get0_type(native.get())) != NID_pkcs7_signed)
        return failed(MessageReport::Unreadable);
    MessageReport report;
    report.isAttached = message.isAttached();
    std::vector<SignerCheck> checks = signersOf(native.get());
    if (checks.empty())
        return failed(MessageReport::NoSigner);
    const CertificateStack certificates = certificatesOf(native.get(), known, &report);
    const Content &content = message.isAttached() ? message.content : outside;
    const FilterChain filters = filtersFor(checks);
    if (content.isNull()) {
        report.problem = MessageReport::NoDocument;
    } else {
        report.problem = problemOf(readContent(content, work, [&](const char *data, qint64 size) {
            return BIO_write(filters.get(), data, int(size)) == size;
        }));
    }
    const bool isRead = report.problem == MessageReport::NoProblem;
    for (SignerCheck &check : checks) {
        check.check(certificates.get(), isRead ? filters.get() : nullptr, message.contentType);
        report.signers += check.report();
    }
    return report;
}

} // namespace Trivex
