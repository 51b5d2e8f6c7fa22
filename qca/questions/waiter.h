// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QObject>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace Trivex {

/// Where a caller waits for an answer or for work on another thread: the GUI thread in a nested
/// event loop, so that the window stays alive and questions are answered; every other thread
/// blocked. The one place where our code runs an event loop of its own.
///
/// What starts inside that loop is no part of the operation that waits: neither the addressee of
/// questions (`QuestionScope`) nor the target of generations (`GenerationTarget`) is in force
/// there; both are again when `wait()` returns.
///
/// To be owned by both sides: who waits may be gone before who resolves is done.
class TRIVEX_QCA_EXPORT Waiter : public QObject {
    Q_OBJECT
public:
    /// True for the first call, which ends the waiting. Thread-safe.
    bool resolve();
    /// Thread-safe.
    bool isResolved() const;
    /// Blocks this thread, for `patience` at most; whether it is resolved. For what mostly takes no
    /// time, so that an event loop runs only where one is needed. Keep it below what is noticed.
    bool settles(std::chrono::milliseconds patience);
    /// Returns once resolved, or when the application ends its event loops: look at `isResolved()`.
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
