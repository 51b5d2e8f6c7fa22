// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/handles.h"

namespace Trivex {

/// A libcrypto library context with the default and the legacy provider. It reads files encrypted
/// with RC2, 40-bit ciphers or 3DES, and leaves the process's own context as its owner configured
/// it. Never null; it has only the default provider if the legacy one is not installed.
/// Thread-safe.
OSSL_LIB_CTX *legacyLibrary();

} // namespace Trivex
