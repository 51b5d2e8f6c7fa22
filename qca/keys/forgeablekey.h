// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <openssl/evp.h>

namespace Trivex {

/// Whether everybody can make signatures that this public key takes for good: libcrypto checks
/// signatures by the formula, whatever the numbers are. Looks at the numbers only, so that it costs
/// less than a check; false for the keys of kinds that it doesn't know, and for null.
bool isForgeable(const EVP_PKEY *key);

} // namespace Trivex
