// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/x509/certificatedata.h"

#include <QtCrypto>

#include <memory>

namespace Trivex {

/// A certificate (RFC 5280). Decodes each part at its first use; copies and certificates with the
/// same DER share the decoded parts. Readable from any thread.
class TRIVEX_QCA_EXPORT CertificateContext : public QCA::CertContext {
    Q_OBJECT
public:
    explicit CertificateContext(QCA::Provider *provider);
    /// Without a native object, see `makeCertificate`.
    CertificateContext(QCA::Provider *provider, std::shared_ptr<const CertificateData> data);
    ~CertificateContext() override;

    QCA::Provider::Context *clone() const override;

    bool createSelfSigned(const QCA::CertificateOptions &options,
                          const QCA::PKeyContext &priv) override;
    const QCA::CertContextProps *props() const override;
    bool compare(const QCA::CertContext *other) const override;
    /// Never null, so that stock callers can hold it: an unreadable key is an `OtherKey`.
    QCA::PKeyContext *subjectPublicKey() const override;
    bool isIssuerOf(const QCA::CertContext *other) const override;
    QCA::Validity validate(const QList<QCA::CertContext *> &trusted,
                           const QList<QCA::CertContext *> &untrusted,
                           const QList<QCA::CRLContext *> &crls, QCA::UsageMode usage,
                           QCA::ValidateFlags flags) const override;
    QCA::Validity validate_chain(const QList<QCA::CertContext *> &chain,
                                 const QList<QCA::CertContext *> &trusted,
                                 const QList<QCA::CRLContext *> &crls, QCA::UsageMode usage,
                                 QCA::ValidateFlags flags) const override;

    QByteArray toDER() const override;
    QString toPEM() const override;
    /// Also makes the native object that stock code reads (TLS, validation), unless `LightDecoding`
    /// is on.
    QCA::ConvertResult fromDER(const QByteArray &der) override;
    QCA::ConvertResult fromPEM(const QString &pem) override;

private:
    friend TRIVEX_QCA_EXPORT QCA::Certificate makeCertificate(const QByteArray &der);

    CertificateContext(const CertificateContext &other);

    // First, and a plain pointer in memory: stock code reads a foreign certificate there.
    X509Handle m_native;
    X509_REQ *m_noRequest = nullptr;
    X509_CRL *m_noCrl = nullptr;
    std::shared_ptr<const CertificateData> m_data;
    bool m_namesOnly = false;
};

} // namespace Trivex
