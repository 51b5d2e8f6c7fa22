// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/handles.h"

namespace Trivex {

/// A libcrypto library context with the default and the legacy provider, in which files that were
/// encrypted by RC2, 40-bit ciphers or 3DES can be read. The process's own context stays as its
/// owner configured it. Never null; without the legacy provider installed it has the default one
/// only. Thread-safe.
OSSL_LIB_CTX *legacyLibrary();

} // namespace Trivex
