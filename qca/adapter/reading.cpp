// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/adapter/reading.h"

#include "qca/x509/certificatecontext.h"
#include "qca/x509/makecertificate.h"
#include "qca/x509/requestcontext.h"

#include <memory>

namespace Trivex {

namespace {

/// The value that QCA makes of what `read` puts into a context of ours; null when it fails.
template <class Value, class Context, class Read> Value valueOf(Read read)
{
    auto context = std::make_unique<Context>(certificateProvider());
    Value value;
    if (read(context.get()) == QCA::ConvertGood)
        value.change(context.release());
    return value;
}

template <class Value, class Context> Value fromDer(const QByteArray &der)
{
    return valueOf<Value, Context>([&](Context *context) { return context->fromDER(der); });
}

template <class Context, class Value> Value own(const Value &value)
{
    if (value.isNull() || dynamic_cast<const Context *>(value.context()))
        return value;
    return fromDer<Value, Context>(value.toDER());
}

} // namespace

QCA::Certificate ownCertificate(const QCA::Certificate &certificate)
{
    return own<CertificateContext>(certificate);
}

QCA::CertificateRequest ownRequest(const QCA::CertificateRequest &request)
{
    // SPKAC has no DER form in QCA.
    if (!request.isNull() && request.format() == QCA::SPKAC)
        return request;
    return own<RequestContext>(request);
}

QCA::Certificate certificateFromPem(const QByteArray &pem)
{
    return valueOf<QCA::Certificate, CertificateContext>([&](CertificateContext *context) {
        return context->fromPEM(QString::fromUtf8(pem.constData(), pem.size()));
    });
}

QCA::CertificateRequest requestFromDer(const QByteArray &der)
{
    return fromDer<QCA::CertificateRequest, RequestContext>(der);
}

QCA::CertificateRequest requestFromPem(const QByteArray &pem)
{
    return valueOf<QCA::CertificateRequest, RequestContext>([&](RequestContext *context) {
        return context->fromPEM(QString::fromUtf8(pem.constData(), pem.size()));
    });
}

} // namespace Trivex
