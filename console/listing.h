// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "console/exitcode.h"
#include "console/patience.h"

namespace Trivex {

/// Says every certificate of the key stores, store by store: tokens, the user's own, the system's.
/// Waits for modules that don't answer while `patience` lasts. Where something is missing it says
/// what there is and why that is not all, and fails.
ExitCode list(bool isJson, const Patience &patience);

} // namespace Trivex
