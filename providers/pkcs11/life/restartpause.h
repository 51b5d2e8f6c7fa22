// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/tokensexport.h"

#include <chrono>
#include <optional>

namespace Trivex {

/// When a module that fails may be started again: one that fails at once would otherwise start a
/// process, or end everybody's login, twice a second for as long as the program runs. The pause
/// doubles with each failure, and is short again once the module has worked for a minute.
class TRIVEX_TOKENS_EXPORT RestartPause {
public:
    using Clock = std::chrono::steady_clock;
    using Milliseconds = std::chrono::milliseconds;

    static constexpr Milliseconds Shortest{500};
    static constexpr Milliseconds Enough{60000};

    explicit RestartPause(Milliseconds longest)
        : m_longest(longest)
    {
    }

    /// It has to be started again, or could not be.
    void failed(Clock::time_point now);
    /// It answers; it does not.
    void works(Clock::time_point now);
    void worksNot() { m_since.reset(); }
    bool isOver(Clock::time_point now) const { return now >= m_until; }

private:
    Milliseconds m_longest;
    Milliseconds m_next = Shortest;
    Clock::time_point m_until;
    std::optional<Clock::time_point> m_since; ///< when it began to work
};

} // namespace Trivex
