// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/x509/requestdata.h"

#include <QtCrypto>

#include <memory>

namespace Trivex {

/// A certification request, PKCS#10 (RFC 2986) or SPKAC. Any provider may serve its "csr" feature
/// with it.
class TRIVEX_QCA_EXPORT RequestContext : public QCA::CSRContext {
    Q_OBJECT
public:
    explicit RequestContext(QCA::Provider *provider);
    ~RequestContext() override;

    QCA::Provider::Context *clone() const override;

    bool canUseFormat(QCA::CertificateRequestFormat format) const override;
    /// Signs with `priv`, through `RequestSigner` if the key has that interface. Names are written
    /// as UTF8String, or as the type that their definitions confine them to. Digest: RSA SHA-256;
    /// P-384 SHA-384; P-521 SHA-512; other curves SHA-256; GOST by its key. False when the key
    /// can't sign or the result does not verify with it; the context is null then.
    bool createRequest(const QCA::CertificateOptions &options,
                       const QCA::PKeyContext &priv) override;

    const QCA::CertContextProps *props() const override;
    bool compare(const QCA::CSRContext *other) const override;
    /// Never null, so that stock callers can hold it: an unreadable key is an `OtherKey`.
    QCA::PKeyContext *subjectPublicKey() const override;

    QString toSPKAC() const override;
    QCA::ConvertResult fromSPKAC(const QString &spkac) override;
    QByteArray toDER() const override;
    QString toPEM() const override;
    QCA::ConvertResult fromDER(const QByteArray &der) override;
    QCA::ConvertResult fromPEM(const QString &pem) override;

private:
    RequestContext(const RequestContext &other);
    bool adopt(const std::shared_ptr<const RequestData> &data);

    // Stock code reads the first three members at this place in a foreign context.
    X509 *m_noCertificate = nullptr;
    RequestHandle m_native;
    X509_CRL *m_noCrl = nullptr;
    std::shared_ptr<const RequestData> m_data;
};

} // namespace Trivex
