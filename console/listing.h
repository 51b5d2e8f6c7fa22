// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "console/exitcode.h"

namespace Trivex {

/// Says every certificate of the key stores, store by store: tokens, the user's own, the system's.
/// Waits a minute at most for modules that don't answer; then says what there is, and fails.
ExitCode list(bool isJson);

} // namespace Trivex
