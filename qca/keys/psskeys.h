// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>

namespace Trivex {

/// How an RSA key that is for RSASSA-PSS alone signs (RFC 4055, 1.2 and 3.1).
struct PssScheme {
    QByteArray digest; ///< libcrypto's name
    QByteArray maskDigest; ///< that of MGF1, the same
    int saltSize = 0; ///< in octets

    bool isValid() const { return !digest.isEmpty() && !maskDigest.isEmpty(); }
};

/// Whether the key in `publicInfo` (DER SubjectPublicKeyInfo) is one of RSASSA-PSS. Cheap.
TRIVEX_QCA_EXPORT bool isPssKey(const QByteArray &publicInfo);

/// What its parameters allow; where it has none, the digest `usual` and as many octets of salt.
/// Invalid for another key, and for one that is bound to what is not made here, such as SHA-1.
TRIVEX_QCA_EXPORT PssScheme pssSchemeOf(const QByteArray &publicInfo, const QByteArray &usual);

/// The DER AlgorithmIdentifier of its signatures.
QByteArray pssAlgorithm(const PssScheme &scheme);

/// The same modulus and exponent as a key of RSA in general, as tokens know all of them.
TRIVEX_QCA_EXPORT QByteArray pssKeyAsRsa(const QByteArray &publicInfo);

/// libcrypto's name of the digest with which an RSA key of that size signs.
TRIVEX_QCA_EXPORT QByteArray rsaDigestFor(int bits);

} // namespace Trivex
