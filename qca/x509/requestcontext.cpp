// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/requestcontext.h"

#include "qca/asn1/pem.h"
#include "qca/x509/certificatewriter.h"
#include "qca/x509/subjectkey.h"

namespace Trivex {

RequestContext::RequestContext(QCA::Provider *provider)
    : QCA::CSRContext(provider)
{
}

RequestContext::RequestContext(const RequestContext &other)
    : QCA::CSRContext(other.provider())
    , m_native(other.m_data ? other.m_data->native() : nullptr)
    , m_data(other.m_data)
{
}

RequestContext::~RequestContext() = default;

QCA::Provider::Context *RequestContext::clone() const
{
    return new RequestContext(*this);
}

bool RequestContext::canUseFormat(QCA::CertificateRequestFormat format) const
{
    return format == QCA::PKCS10 || format == QCA::SPKAC;
}

bool RequestContext::createRequest(const QCA::CertificateOptions &options,
                                   const QCA::PKeyContext &priv)
{
    return options.format() == QCA::SPKAC
        ? adopt(RequestData::fromSpkac(writeSpkac(options, priv)))
        : adopt(RequestData::fromDer(writeRequest(options, priv)));
}

bool RequestContext::adopt(const std::shared_ptr<const RequestData> &data)
{
    m_native = data ? data->native() : nullptr;
    m_data = data;
    return data != nullptr;
}

const QCA::CertContextProps *RequestContext::props() const
{
    static const auto &nothing = *new QCA::CertContextProps{};
    return m_data ? &m_data->properties() : &nothing;
}

bool RequestContext::compare(const QCA::CSRContext *other) const
{
    return m_data && other && m_data->der() == other->toDER();
}

QCA::PKeyContext *RequestContext::subjectPublicKey() const
{
    return makeSubjectKey(m_data ? m_data->publicInfo() : QByteArray(), provider());
}

QString RequestContext::toSPKAC() const
{
    if (!m_data || m_data->properties().format != QCA::SPKAC)
        return {};
    return QLatin1String("SPKAC=") + QString::fromLatin1(m_data->der().toBase64());
}

QCA::ConvertResult RequestContext::fromSPKAC(const QString &spkac)
{
    return adopt(RequestData::fromSpkac(spkac.toLatin1())) ? QCA::ConvertGood : QCA::ErrorDecode;
}

QByteArray RequestContext::toDER() const
{
    return m_data ? m_data->der() : QByteArray();
}

QString RequestContext::toPEM() const
{
    if (!m_data || m_data->properties().format != QCA::PKCS10)
        return {};
    return QString::fromLatin1(writePem("CERTIFICATE REQUEST", m_data->der()));
}

QCA::ConvertResult RequestContext::fromDER(const QByteArray &der)
{
    return adopt(RequestData::fromDer(der)) ? QCA::ConvertGood : QCA::ErrorDecode;
}

QCA::ConvertResult RequestContext::fromPEM(const QString &pem)
{
    return fromDER(readPem(pem, {"CERTIFICATE REQUEST", "NEW CERTIFICATE REQUEST"}));
}

} // namespace Trivex
