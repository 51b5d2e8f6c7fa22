// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/keys/digests.h"

namespace Trivex {

/// How an RSA key that is for RSASSA-PSS alone signs (RFC 4055, 1.2 and 3.1).
struct PssScheme {
    const Digest *digest = nullptr;
    const Digest *maskDigest = nullptr; ///< that of MGF1
    int saltSize = 0; ///< in octets

    bool isValid() const { return digest && maskDigest; }
};

/// Whether the key in `publicInfo` (DER SubjectPublicKeyInfo) is one of RSASSA-PSS. Cheap.
TRIVEX_QCA_EXPORT bool isPssKey(const QByteArray &publicInfo);

/// What its parameters allow; where it has none, the digest `usual` and as many octets of salt.
/// Invalid for another key, and for one that is bound to what is not made here, such as SHA-1.
TRIVEX_QCA_EXPORT PssScheme pssSchemeOf(const QByteArray &publicInfo, const Digest &usual);

/// The DER AlgorithmIdentifier of its signatures.
QByteArray pssAlgorithm(const PssScheme &scheme);

/// The same modulus and exponent as a key of RSA in general, as tokens know all of them.
TRIVEX_QCA_EXPORT QByteArray pssKeyAsRsa(const QByteArray &publicInfo);

} // namespace Trivex
