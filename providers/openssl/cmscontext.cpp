// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/openssl/cmscontext.h"

#include "providers/openssl/cmsmessage.h"

namespace Trivex {

CmsContext::CmsContext(QCA::Provider *provider)
    : QCA::SMSContext(provider, QStringLiteral("cms"))
    , m_means(std::make_shared<MessageMeans>())
{
}

QCA::Provider::Context *CmsContext::clone() const
{
    auto *copy = new CmsContext(provider());
    *copy->m_means = *m_means;
    return copy;
}

void CmsContext::setTrustedCertificates(const QCA::CertificateCollection &trusted)
{
    m_means->trusted = trusted;
}

void CmsContext::setUntrustedCertificates(const QCA::CertificateCollection &untrusted)
{
    m_means->untrusted = untrusted;
}

void CmsContext::setPrivateKeys(const QList<QCA::SecureMessageKey> &keys)
{
    m_means->keys = keys;
}

QCA::MessageContext *CmsContext::createMessage()
{
    return new CmsMessage(provider(), m_means);
}

} // namespace Trivex
