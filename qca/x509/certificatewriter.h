// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QtCrypto>

namespace Trivex {

/// A private key ready to sign X.509 structures.
class SigningKey {
public:
    /// Clones what `key` holds, so the caller's object stays as it is.
    explicit SigningKey(const QCA::PKeyContext &key);
    ~SigningKey();
    SigningKey(const SigningKey &) = delete;
    SigningKey &operator=(const SigningKey &) = delete;

    /// DER SubjectPublicKeyInfo; empty when the key can't sign X.509 structures at all.
    QByteArray publicInfo() const { return m_publicInfo; }
    /// DER AlgorithmIdentifier of the signatures.
    QByteArray algorithm() const { return m_algorithm; }

    /// `body` followed by the algorithm and the signature, as certificates and requests are built.
    /// Empty when the key can't sign, or when its public half does not verify the signature.
    QByteArray seal(const QByteArray &body);

private:
    bool sign(const QByteArray &body, QByteArray *signature);
    bool verify(const QByteArray &body, const QByteArray &signature) const;

    QCA::PKeyBase *m_key;
    QByteArray m_publicInfo;
    QByteArray m_algorithm;
    QByteArray m_digest;
};

/// DER CertificationRequest (RFC 2986); empty when it can't be signed.
QByteArray writeRequest(const QCA::CertificateOptions &options, const QCA::PKeyContext &key);

/// Base64 of SignedPublicKeyAndChallenge; empty when it can't be signed.
QByteArray writeSpkac(const QCA::CertificateOptions &options, const QCA::PKeyContext &key);

/// DER self-signed Certificate (RFC 5280); empty when it can't be signed.
QByteArray writeSelfSigned(const QCA::CertificateOptions &options, const QCA::PKeyContext &key);

} // namespace Trivex
