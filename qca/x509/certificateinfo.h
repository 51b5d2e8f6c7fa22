// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"
#include "qca/keys/signaturenumbers.h"

#include <QtCrypto>

#include <optional>

namespace Trivex {

/// The algorithm with which `certificate` is signed; 0 for a null certificate and for one whose
/// algorithm has no number. If QCA has no number for it, it is read from the DER form, even if
/// other parts of that can't be read. So it works for the certificates of any provider.
TRIVEX_QCA_EXPORT int signatureAlgorithm(const QCA::Certificate &certificate);

// Fields for which QCA has no name, of certificates of our own decoder. They are empty if libcrypto
// refuses the certificate, even if we can read it.

/// The first street address (2.5.4.9) of the subject, in at most 1023 bytes of UTF-8; nothing when
/// it has none. An empty text for a null certificate and one that libcrypto refuses.
TRIVEX_QCA_EXPORT std::optional<QString> streetAddress(const QCA::Certificate &certificate);

/// Libcrypto's long name of the public key's algorithm, "Elliptic Curve" for X9.62 keys. Empty when
/// the certificate or its key can't be read or the algorithm has no name. Algorithms that libcrypto
/// knows only by name (GOST without an engine) have one too.
TRIVEX_QCA_EXPORT QString publicKeyAlgorithmName(const QCA::Certificate &certificate);

} // namespace Trivex
