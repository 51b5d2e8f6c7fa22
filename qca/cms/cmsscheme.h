// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>

namespace Trivex {

/// How a key of one kind signs messages.
struct CmsScheme {
    QByteArray digest; ///< libcrypto's name of the digest of the document
    /// The digest that the key's own operation begins with; empty for a key that digests by itself.
    QByteArray keyDigest;
    QByteArray digestAlgorithm; ///< DER AlgorithmIdentifier
    QByteArray signatureAlgorithm; ///< the same

    bool isValid() const { return !digest.isEmpty(); }
};

/// The scheme of the key in `publicInfo` (DER SubjectPublicKeyInfo): a digest of the key's own
/// strength (NIST SP 800-57 part 1, 5.6.1), Streebog for GOST keys (RFC 9215), SHA-512 for Ed25519
/// (RFC 8419, 3.1). Invalid for a key that makes no such signatures.
TRIVEX_QCA_EXPORT CmsScheme cmsSchemeFor(const QByteArray &publicInfo);

} // namespace Trivex
