// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/tokensexport.h"

#include <QByteArray>

namespace Trivex {

/// A piece of a DER encoding, by its place in it.
struct DerSpan {
    quint32 offset = 0;
    quint32 length = 0;

    bool isEmpty() const { return length == 0; }
    /// The bytes in `der`, not copied: valid as long as `der` is.
    QByteArray in(const QByteArray &der) const
    {
        return QByteArray::fromRawData(der.constData() + offset, int(length));
    }
};

/// Where the fields of a certificate (RFC 5280, 4.1) lie that tokens are asked about. Found by
/// walking over the encoding, which takes a hundredth of the time of decoding it.
struct CertificateParts {
    DerSpan serial; ///< INTEGER with its header
    DerSpan issuer; ///< Name with its header
    DerSpan subject; ///< Name with its header
    DerSpan publicInfo; ///< SubjectPublicKeyInfo with its header
    DerSpan keyId; ///< content of the subject key identifier; empty without one
    DerSpan authorityKeyId; ///< keyIdentifier of the authority key identifier; empty without one
    bool isAuthority = false; ///< its basic constraints say so (RFC 5280, 4.2.1.9)

    bool isValid() const { return !publicInfo.isEmpty(); }
};

/// Invalid parts when the bytes are no certificate; never reads past them.
TRIVEX_TOKENS_EXPORT CertificateParts certificateParts(const QByteArray &der);

/// The bits of the subjectPublicKey in a DER SubjectPublicKeyInfo; empty when it is none.
TRIVEX_TOKENS_EXPORT QByteArray publicKeyBits(const QByteArray &publicInfo);

/// The content of the value that `der` starts with, when its tag is `tag`; else empty.
TRIVEX_TOKENS_EXPORT QByteArray derContent(const QByteArray &der, quint8 tag);

/// DER SubjectPublicKeyInfo of an RSA key (RFC 3279, 2.3.1); the numbers are big-endian.
TRIVEX_TOKENS_EXPORT QByteArray rsaPublicInfo(const QByteArray &modulus,
                                              const QByteArray &exponent);

/// DER SubjectPublicKeyInfo of an elliptic-curve key (RFC 5480); `parameters` is DER, `point` is
/// the encoded point.
TRIVEX_TOKENS_EXPORT QByteArray ecPublicInfo(const QByteArray &parameters, const QByteArray &point);

} // namespace Trivex
