// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include "qca/asn1/handles.h"
#include "qca/x509/signaturecheck.h"

#include <QtCrypto>

#include <memory>
#include <mutex>

namespace Trivex {

/// The data of one certificate, shared by all contexts with the same DER. Never changes; each part
/// is decoded once, on the first thread that asks.
class TRIVEX_QCA_EXPORT CertificateData {
public:
    /// The data of the certificate at the beginning of `der`; null when there is none or when it is
    /// over the bounds. The same object as long as one with the same DER lives.
    static std::shared_ptr<const CertificateData> fromDer(const QByteArray &der);
    ~CertificateData();
    CertificateData(const CertificateData &) = delete;
    CertificateData &operator=(const CertificateData &) = delete;

    const QByteArray &der() const { return m_der; }
    /// The subject and the issuer are always filled; the rest may be empty.
    const QCA::CertContextProps &names() const;
    const QCA::CertContextProps &properties() const;
    /// DER SubjectPublicKeyInfo.
    QByteArray publicInfo() const;
    /// True when the names allow that this certificate issued `other`; cheap.
    bool mayHaveIssued(const CertificateData &other) const;
    /// Whether this certificate's key signed `other`.
    SignatureState checkIssued(const CertificateData &other) const;
    /// A native object; null when libcrypto can't read the certificate.
    X509Handle native() const;

private:
    explicit CertificateData(const QByteArray &der);

    void decodeNames() const;
    void decodeProperties() const;

    const QByteArray m_der;
    mutable std::once_flag m_namesOnce;
    mutable std::once_flag m_propertiesOnce;
    /// Made at the first request: they are QCA's memory, and a thread that opens a bundle may
    /// outlive QCA.
    mutable std::unique_ptr<QCA::CertContextProps> m_properties;
};

} // namespace Trivex
