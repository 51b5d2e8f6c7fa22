// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/handles.h"
#include "qca/cms/messagereport.h"

#include <openssl/cms.h>

namespace Trivex {

using CmsHandle = Handle<CMS_ContentInfo, CMS_ContentInfo_free>;

/// One signature of a message that libcrypto has read. The message outlives it.
class SignerCheck {
public:
    explicit SignerCheck(CMS_SignerInfo *signer);

    /// Null for a digest that libcrypto does not have.
    const EVP_MD *digest() const { return m_digest; }
    /// Looks for the signer's certificate among `certificates` and checks what was signed; of two
    /// that say to be the same the one that has signed counts. `digests` is a chain of digest
    /// filters that the document went through; null without a document.
    void check(const STACK_OF(X509) * certificates, BIO *digests, const QByteArray &contentType);
    const SignerReport &report() const { return m_report; }

private:
    SignerReport::Verdict verdictWith(X509 *certificate, BIO *digests);
    SignerReport::Verdict signatureVerdict(X509 *certificate);
    SignerReport::Verdict documentVerdict(BIO *digests);
    bool isOfType(const QByteArray &contentType) const;

    CMS_SignerInfo *const m_signer;
    const EVP_MD *m_digest = nullptr;
    SignerReport m_report;
};

} // namespace Trivex
