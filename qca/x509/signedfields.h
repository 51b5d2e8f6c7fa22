// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"

namespace Trivex {

/// Where the parts of a signed structure lie that certificates, revocation lists (RFC 5280, 4.1 and
/// 5.1), requests (RFC 2986, 4) and SPKAC have in common. They are views of the bytes that were
/// read.
struct SignedFields {
    Der::Slice whole; ///< with tag and length
    Der::Element body; ///< the part that is signed
    Der::Element algorithm; ///< AlgorithmIdentifier of the signature
    Der::Element signature; ///< BIT STRING, perhaps in several pieces

    /// The octets of the signature; empty when it is malformed.
    QByteArray signatureBytes() const;
};

/// False when `der` does not begin with a signed structure. Ignores the bytes behind it.
bool findSignedFields(Der::Slice der, SignedFields *fields);

} // namespace Trivex
