// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/contents/tokencontents.h"

namespace Trivex {

/// Prints a warning about a certificate object that can't be shown. Each object of each token is
/// reported once a process, because tokens are read often. Thread-safe.
void warnOfDamaged(const QString &storeId, const QString &tokenName,
                   const TokenCertificate &certificate);

} // namespace Trivex
