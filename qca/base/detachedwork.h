// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <functional>

namespace Trivex {

/// Runs `work` in a thread of its own, which nobody waits for: work that takes seconds and is no
/// object of Qt's. `work` owns all that it uses. The process may end before it does (see
/// `ForeignCall`); once that has begun nothing is started any more, and false is returned. Where
/// the system has no thread to give, the work is done here and now.
TRIVEX_QCA_EXPORT bool startDetached(std::function<void()> work);

} // namespace Trivex
