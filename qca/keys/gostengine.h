// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

namespace Trivex {

/// Loads libcrypto's engine "gost" where the system has it, once a process and only when the first
/// GOST key shows up. It becomes the default for the GOST algorithms only, which nothing else
/// serves. False when there is no engine. Thread-safe.
TRIVEX_QCA_EXPORT bool loadGostEngine();

} // namespace Trivex
