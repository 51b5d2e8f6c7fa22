// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "console/order.h"

namespace Trivex {

/// Does what is asked for without a window; the program's exit code. Under an application object.
int carryOut(const Order &order);

} // namespace Trivex
