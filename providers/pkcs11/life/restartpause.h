// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/tokensexport.h"

#include <chrono>
#include <optional>

namespace Trivex {

/// Says when a module that failed may be started again. Without a pause, a module that fails at
/// once would start a process, or end everybody's login, twice a second. The pause doubles with
/// each failure and is short again after the module has worked for `StableTime`. For one thread.
class TRIVEX_TOKENS_EXPORT RestartPause {
public:
    using Clock = std::chrono::steady_clock;
    using Milliseconds = std::chrono::milliseconds;

    static constexpr Milliseconds Shortest{500};
    static constexpr Milliseconds StableTime{60000};

    explicit RestartPause(Milliseconds longest)
        : m_longest(longest)
    {
    }

    /// Notes that the module could not be started, or has to be started again.
    void failed(Clock::time_point now);
    /// Note that the module answers, and that it has stopped answering without a restart.
    void works(Clock::time_point now);
    void interrupt() { m_since.reset(); }
    bool isOver(Clock::time_point now) const { return now >= m_until; }

private:
    Milliseconds m_longest;
    Milliseconds m_next = Shortest;
    Clock::time_point m_until;
    std::optional<Clock::time_point> m_since; ///< when the module began to work
};

} // namespace Trivex
