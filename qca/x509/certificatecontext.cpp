// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/x509/certificatecontext.h"

#include "qca/asn1/pem.h"
#include "qca/keys/eckeycontext.h"
#include "qca/keys/pkeycontainer.h"
#include "qca/x509/certificatewriter.h"
#include "qca/x509/lightdecoding.h"
#include "qca/x509/subjectkey.h"
#include "qca/x509/validation.h"

#include <openssl/err.h>

namespace Trivex {

CertificateContext::CertificateContext(QCA::Provider *provider)
    : QCA::CertContext(provider)
{
}

CertificateContext::CertificateContext(QCA::Provider *provider,
                                       std::shared_ptr<const CertificateData> data)
    : QCA::CertContext(provider)
    , m_data(std::move(data))
{
}

CertificateContext::CertificateContext(const CertificateContext &other)
    : QCA::CertContext(other.provider())
    , m_native(share(other.m_native.get()))
    , m_data(other.m_data)
{
}

CertificateContext::~CertificateContext() = default;

QCA::Provider::Context *CertificateContext::clone() const
{
    return new CertificateContext(*this);
}

bool CertificateContext::createSelfSigned(const QCA::CertificateOptions &options,
                                          const QCA::PKeyContext &priv)
{
    m_native.reset();
    m_data.reset();
    return fromDER(writeSelfSigned(options, priv)) == QCA::ConvertGood;
}

const QCA::CertContextProps *CertificateContext::props() const
{
    static const auto &nothing = *new QCA::CertContextProps{};
    if (!m_data)
        return &nothing;
    return m_namesOnly || LightDecoding::isOn() ? &m_data->names() : &m_data->properties();
}

bool CertificateContext::compare(const QCA::CertContext *other) const
{
    return m_data && other && m_data->der() == other->toDER();
}

QCA::PKeyContext *CertificateContext::subjectPublicKey() const
{
    return makeSubjectKey(m_data ? m_data->publicInfo() : QByteArray(), provider());
}

bool CertificateContext::isIssuerOf(const QCA::CertContext *other) const
{
    const auto issued = other ? CertificateData::fromDer(other->toDER()) : nullptr;
    if (!m_data || !issued || !m_data->mayHaveIssued(*issued))
        return false;
    const X509Handle issuer = m_data->native();
    const X509Handle subject = issued->native();
    const bool fits =
        issuer && subject && X509_check_issued(issuer.get(), subject.get()) == X509_V_OK;
    ERR_clear_error();
    // Several certificates may have the same name; the signature decides if it can be checked.
    return fits && m_data->checkIssued(*issued) != SignatureState::Bad;
}

QCA::Validity CertificateContext::validate(const QList<QCA::CertContext *> &trusted,
                                           const QList<QCA::CertContext *> &untrusted,
                                           const QList<QCA::CRLContext *> &crls,
                                           QCA::UsageMode usage, QCA::ValidateFlags) const
{
    return validateCertificate(this, {trusted, untrusted, crls, usage});
}

QCA::Validity CertificateContext::validate_chain(const QList<QCA::CertContext *> &chain,
                                                 const QList<QCA::CertContext *> &trusted,
                                                 const QList<QCA::CRLContext *> &crls,
                                                 QCA::UsageMode usage, QCA::ValidateFlags) const
{
    if (chain.isEmpty())
        return QCA::ErrorValidityUnknown;
    return validateCertificate(chain.first(), {trusted, chain.mid(1), crls, usage}, &chain);
}

QByteArray CertificateContext::toDER() const
{
    return m_data ? m_data->der() : QByteArray();
}

QString CertificateContext::toPEM() const
{
    return m_data ? QString::fromLatin1(writePem("CERTIFICATE", m_data->der())) : QString();
}

QCA::ConvertResult CertificateContext::fromDER(const QByteArray &der)
{
    auto data = CertificateData::fromDer(der);
    if (!data)
        return QCA::ErrorDecode;
    m_native = LightDecoding::isOn() ? nullptr : data->native();
    m_data = std::move(data);
    return QCA::ConvertGood;
}

QCA::ConvertResult CertificateContext::fromPEM(const QString &pem)
{
    return fromDER(readPem(pem, {"CERTIFICATE", "X509 CERTIFICATE", "TRUSTED CERTIFICATE"}));
}

} // namespace Trivex
