// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"

#include <QString>

namespace Trivex {

/// A signature algorithm as people say it ("RSA with SHA-256"); `algorithm` is the content of an
/// AlgorithmIdentifier. libcrypto's name or the OID for what we have no words for.
QString signatureAlgorithmText(Der::Slice algorithm);

/// "GOST R" in the user's language wherever `text` names a Russian standard.
QString localizedAlgorithm(const QString &text);

} // namespace Trivex
