// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/tokensexport.h"
#include "qca/asn1/der.h"

#include <QByteArray>

namespace Trivex {

/// A piece of a DER encoding, by its place in it.
struct DerSpan {
    quint32 offset = 0;
    quint32 length = 0;

    bool isEmpty() const { return length == 0; }
    /// The piece as a view of `der`, which has to outlive it.
    Der::Slice sliceIn(const QByteArray &der) const
    {
        return {der.constData() + offset, int(length)};
    }
    /// The same as a byte array, not copied.
    QByteArray in(const QByteArray &der) const { return sliceIn(der).view(); }
};

/// Where the fields of a certificate (RFC 5280, 4.1) lie that tokens are asked about. It holds no
/// pointers, so it stays true of each copy of the bytes.
struct CertificateParts {
    DerSpan serial; ///< INTEGER with its header
    DerSpan issuer; ///< Name with its header
    DerSpan subject; ///< Name with its header
    DerSpan publicInfo; ///< SubjectPublicKeyInfo with its header
    DerSpan extensions; ///< content of the list; empty without one
    bool isAuthority = false; ///< its basic constraints say so (RFC 5280, 4.2.1.9)

    bool isValid() const { return !publicInfo.isEmpty(); }
};

/// Invalid parts when `der` does not begin with a certificate that can be shown. Bytes behind the
/// certificate are ignored.
TRIVEX_TOKENS_EXPORT CertificateParts certificateParts(const QByteArray &der);

} // namespace Trivex
