// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

namespace Trivex {

/// Loads libcrypto's ciphers, digests, error texts and the configuration of the machine.
/// Thread-safe; later calls do nothing.
TRIVEX_QCA_EXPORT void initialiseLibcrypto();

} // namespace Trivex
