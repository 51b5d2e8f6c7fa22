// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <unistd.h>

namespace Trivex {

/// Stops this thread for good.
[[noreturn]] inline void parkThread() noexcept
{
    for (;;)
        pause();
}

} // namespace Trivex
