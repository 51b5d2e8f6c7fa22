// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QObject>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace Trivex {

/// Lets a caller wait for an answer or for work on another thread. The GUI thread waits in a nested
/// event loop, so that the window stays alive and can answer questions; every other thread blocks.
/// No other code of ours runs an event loop of its own.
///
/// An operation that starts inside that loop is not part of the one that waits. So the addressee of
/// questions (`QuestionScope`) and the target of generations (`GenerationTarget`) are not in force
/// there, and are in force again when `wait()` returns.
///
/// Both sides own the waiter, because either may be destroyed first.
class TRIVEX_QCA_EXPORT Waiter : public QObject {
    Q_OBJECT
public:
    /// True for the first call, which ends the waiting. Thread-safe.
    bool resolve();
    /// Thread-safe.
    bool isResolved() const;
    /// Blocks this thread for `patience` at most; true when resolved. It avoids the event loop for
    /// work that usually ends at once. Keep `patience` shorter than a person would notice.
    bool settles(std::chrono::milliseconds patience);
    /// Returns when resolved, or when the application ends its event loops; `isResolved()` tells.
    void wait();

Q_SIGNALS:
    /// Emitted on the resolving thread.
    void resolved();

private:
    void waitInEventLoop();
    void block();

    mutable std::mutex m_mutex;
    std::condition_variable m_condition;
    bool m_resolved = false;
};

} // namespace Trivex
