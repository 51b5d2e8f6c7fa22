// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <mutex>

namespace Trivex {

/// Whether a token is being made anew, as C_InitToken does: the look at the slots leaves it alone
/// meanwhile, and takes it for another token afterwards. Thread-safe.
class Remaking {
public:
    /// Held for as long as the slot is looked at, so that a look never sees the token change.
    std::unique_lock<std::mutex> lock() { return std::unique_lock(m_mutex); }
    bool isRunning() const { return m_state == Running; }
    /// Nothing that was known of the token holds any more.
    bool isOver() const { return m_state == Over; }

    /// Waits for a look that has begun.
    void begin()
    {
        const std::lock_guard lock(m_mutex);
        m_state = Running;
    }
    /// `isUntouched`: the token has refused, and is as it was.
    void end(bool isUntouched) { m_state = isUntouched ? Untouched : Over; }

private:
    enum State { Untouched, Running, Over };

    std::mutex m_mutex;
    std::atomic<State> m_state{Untouched};
};

} // namespace Trivex
