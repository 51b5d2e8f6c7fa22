// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <chrono>

namespace Trivex {

/// QCA's own thread of key stores and the short-lived threads that ask it. QCA stops them when it
/// ends. When `exit` is called nothing stops them, although exit destroys what they use, so the end
/// of the process has to. See decision 018. Thread-safe.
class TRIVEX_QCA_EXPORT StoreThread {
public:
    using Deadline = std::chrono::steady_clock::time_point;

    /// The longest that the end of the process, or of an application object, waits for these
    /// threads.
    static constexpr std::chrono::milliseconds Patience{1000};

    /// Call it on that thread, which is known from then on until it ends. From then on the end of
    /// an application object waits for QCA's operations before QCA ends with it: an operation that
    /// is still running when QCA ends waits for ever, and so does whoever deletes it.
    static void note();
    /// Whether the store thread is known and runs.
    static bool isKnown();

    /// Waits until no thread of QCA's is asking the store thread for anything. False when one still
    /// is at the deadline; true without a store thread.
    static bool waitForOperations(Deadline deadline);
    /// Stops the store thread while it runs its event loop, not in the middle of other code: of
    /// starting a program, say, whose forked child would wait for ever. From then on it answers
    /// only while the main thread waits, and nobody where another thread calls this. Also keeps QCA
    /// from ending, which would wait for the thread. Call it once, at the end of the process. False
    /// when the thread could not be reached before the deadline; true without one.
    static bool hold(Deadline deadline);
};

} // namespace Trivex
