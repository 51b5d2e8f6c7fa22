// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/makecertificate.h"

#include "qca/base/providers.h"
#include "qca/x509/certificatecontext.h"

#include <atomic>

namespace Trivex {

namespace {

std::atomic<QCA::Provider *> provider{nullptr};

} // namespace

void setCertificateProvider(QCA::Provider *newProvider)
{
    provider = newProvider;
}

QCA::Provider *certificateProvider()
{
    if (QCA::Provider *known = provider)
        return known;
    return QCA::findProvider(opensslProviderName());
}

QCA::Certificate makeCertificate(const QByteArray &der)
{
    auto data = CertificateData::fromDer(der);
    if (!data)
        return {};
    auto *context = new CertificateContext(certificateProvider(), std::move(data));
    // QCA reads the names here and nothing else; the rest waits until somebody asks.
    context->m_namesOnly = true;
    QCA::Certificate certificate;
    certificate.change(context);
    context->m_namesOnly = false;
    return certificate;
}

} // namespace Trivex
