// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/contents/tokencontents.h"

namespace Trivex {

/// Warns of a certificate object that can't be shown: once a process for each token and object,
/// because tokens are read again and again. Thread-safe.
void warnOfDamaged(const QString &storeId, const QString &tokenName,
                   const TokenCertificate &certificate);

} // namespace Trivex
