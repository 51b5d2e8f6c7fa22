// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

namespace Trivex {

/// Whether a token is being made anew, as C_InitToken does: the look at the slots leaves it alone
/// meanwhile, and takes it for another token afterwards. Thread-safe, without a lock, because a
/// module is asked in between.
class Remaking {
public:
    /// Taken before a slot is looked at.
    struct Look {
        int steps = 0;
        /// Nothing that was known of the token holds any more.
        bool isOver = false;

        /// At the moment the module would report no token, or one with half a name.
        bool isInBetween() const { return steps % 2 != 0; }
    };

    Look look() const
    {
        const int steps = m_steps;
        return {steps, m_isOver};
    }
    /// Whether what the module has told since then may be a token that was changing.
    bool hasMoved(const Look &since) const { return m_steps != since.steps; }
    bool isOver() const { return m_isOver; }

    void begin() { ++m_steps; }
    /// `isUntouched`: the token has refused, and is as it was.
    void end(bool isUntouched)
    {
        if (!isUntouched)
            m_isOver = true;
        ++m_steps;
    }

private:
    std::atomic_int m_steps{0};
    std::atomic_bool m_isOver{false};
};

} // namespace Trivex
