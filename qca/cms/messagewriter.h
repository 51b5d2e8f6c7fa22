// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/cms/cmsscheme.h"

#include <QDateTime>
#include <QList>

namespace Trivex {

/// One signature of a document, in the making (RFC 5652, 5; CAdES-BES, ETSI EN 319 122-1). The
/// private key takes no part: whoever has it signs `toBeSigned()`.
class TRIVEX_QCA_EXPORT MessageWriter {
public:
    /// Signs with the key of `certificate`, both it and the chain in DER. Roots of the chain are
    /// left out: who checks has them, or does not believe them.
    MessageWriter(const QByteArray &certificate, const QList<QByteArray> &chain);
    /// Another chain of the same certificate. No part of what is signed.
    void setChain(const QList<QByteArray> &chain);

    /// Whether the certificate's key makes such signatures.
    bool isValid() const { return m_scheme.isValid() && !m_certificate.isEmpty(); }
    const CmsScheme &scheme() const { return m_scheme; }
    /// DER SubjectPublicKeyInfo of the signer.
    const QByteArray &publicInfo() const { return m_publicInfo; }

    /// Whether the certificates go into the message; they do unless this says otherwise.
    void setBundled(bool isBundled) { m_isBundled = isBundled; }
    /// The signed attributes for a document with that digest, to be signed at `time`.
    void setDigest(const QByteArray &digest, const QDateTime &time);
    /// DER of the signed attributes as they are signed, a SET OF (RFC 5652, 5.4).
    QByteArray toBeSigned() const;
    void setSignature(const QByteArray &signature) { m_signature = signature; }

    /// The message without its document.
    QByteArray detached() const;
    /// The message around a document of `size` octets: what stands before it, and behind it.
    void attached(qint64 size, QByteArray *before, QByteArray *behind) const;

private:
    QByteArray certificates() const;
    QByteArray signerInfo() const;

    QByteArray m_certificate;
    QList<QByteArray> m_chain;
    QByteArray m_publicInfo;
    QByteArray m_issuer; ///< Name, DER
    QByteArray m_serial; ///< INTEGER, DER
    CmsScheme m_scheme;
    bool m_isBundled = true;
    QByteArray m_attributes; ///< the members of the SET
    QByteArray m_signature;
};

} // namespace Trivex
