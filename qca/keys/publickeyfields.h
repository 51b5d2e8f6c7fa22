// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"

namespace Trivex {

/// Where the fields of a SubjectPublicKeyInfo (RFC 5280, 4.1) lie in its DER form. They are views
/// of the bytes that were read.
struct TRIVEX_QCA_EXPORT PublicKeyFields {
    Der::Slice algorithm; ///< content of the algorithm's OBJECT IDENTIFIER
    Der::Slice parameters; ///< of the algorithm, with tag and length; empty when there are none
    /// Content of the BIT STRING: the number of unused bits, then the key. Empty when it is
    /// damaged.
    Der::Slice bitString;

    /// The algorithm's dotted OID; empty when it is malformed.
    QByteArray oid() const { return Der::oidText(algorithm); }
    /// The octets of the key, without the number of unused bits before them.
    Der::Slice key() const
    {
        return bitString.isEmpty() ? bitString : Der::Slice{bitString.data + 1, bitString.size - 1};
    }
};

/// False when `publicInfo` does not begin with a SubjectPublicKeyInfo. Ignores the bytes behind it.
TRIVEX_QCA_EXPORT bool findPublicKeyFields(Der::Slice publicInfo, PublicKeyFields *fields);

/// The key identifier of a public key: the SHA-1 digest of its bits (RFC 5280, 4.2.1.2, method 1).
/// Empty when `publicInfo` is no SubjectPublicKeyInfo or has no bits.
TRIVEX_QCA_EXPORT QByteArray keyIdentifierOf(const QByteArray &publicInfo);

} // namespace Trivex
