// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "console/exitcode.h"
#include "console/order.h"
#include "console/patience.h"

namespace Trivex {

/// Signs a document with the key that the order names (CMS). Says where the signature is.
ExitCode sign(const Order &order, const Patience &patience);

} // namespace Trivex
