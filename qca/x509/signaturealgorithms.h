// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"

#include <QtCrypto>

namespace Trivex {

/// The number of the signature algorithm in the content of an AlgorithmIdentifier (RFC 5280,
/// 4.1.1.2); `SignatureUnknown` where QCA has none, never a number outside of its range.
QCA::SignatureAlgorithm signatureAlgorithmOf(Der::Slice algorithm);

/// How a key of one kind signs X.509 structures.
struct SignatureScheme {
    QByteArray digest; ///< libcrypto's name; empty for keys that digest by themselves
    QByteArray algorithm; ///< DER AlgorithmIdentifier; empty when there is no scheme
};

/// The scheme for a key of `keyType` with `bits` bits and the DER SubjectPublicKeyInfo `spki`: RSA,
/// DSA and GOST with their usual digest, curves with one of their own strength.
SignatureScheme signatureSchemeFor(int keyType, int bits, const QByteArray &spki);

} // namespace Trivex
