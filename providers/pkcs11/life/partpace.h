// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <chrono>

namespace Trivex {

/// Says when rows of a token that is still being read are worth showing: often enough for somebody
/// who waits, never where the whole reading takes no time, and so that most of the time goes into
/// reading.
class PartPace {
public:
    bool isDue()
    {
        m_begun = Clock::now();
        return m_begun >= m_next;
    }

    /// What was due has been shown.
    void noteShown()
    {
        const auto now = Clock::now();
        m_next = now + std::max<Clock::duration>(Pause, Share * (now - m_begun));
    }

private:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds Pause{200};
    /// Showing asks the token a question, which may be slow.
    static constexpr int Share = 8;

    Clock::time_point m_begun;
    Clock::time_point m_next = Clock::now() + Pause;
};

} // namespace Trivex
