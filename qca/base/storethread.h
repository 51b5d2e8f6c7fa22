// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <chrono>

namespace Trivex {

/// QCA's own thread of key stores and the short-lived ones that ask it, as the end of a process has
/// to know them: QCA stops them when it ends, and nothing stops them when `exit` is called, which
/// destroys what they use. See decision 018. Thread-safe.
class TRIVEX_QCA_EXPORT StoreThread {
public:
    using Deadline = std::chrono::steady_clock::time_point;

    /// What the end of the process, or of an application object, waits for these threads at most.
    static constexpr std::chrono::milliseconds Patience{1000};

    /// To be called on that thread: it is known from then on, until it ends. From then on QCA's
    /// operations are waited for where an application object goes, before QCA ends with it: one
    /// that QCA ends under waits for ever, and so does who deletes it.
    static void note();
    /// Whether it is known and runs.
    static bool isKnown();

    /// Waits until no thread of QCA's asks the store thread for anything. False when one still does
    /// at the deadline; true without a store thread.
    static bool waitForOperations(Deadline deadline);
    /// Stops the store thread for good where it is in nobody's code but ours, its event loop's: not
    /// halfway through the start of a program, say, whose forked half would wait for the other for
    /// ever. QCA is kept from ending, which would wait for the thread. At the end of the process,
    /// once. False when the thread could not be reached until the deadline; true without one.
    static bool hold(Deadline deadline);
};

} // namespace Trivex
