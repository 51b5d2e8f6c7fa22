// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "console/exitcode.h"
#include "console/order.h"
#include "console/patience.h"

namespace Trivex {

/// Checks the signatures of a document, and says what was found out of each. `NotGood` unless all
/// is well with every one of them.
ExitCode verify(const Order &order, const Patience &patience);

} // namespace Trivex
