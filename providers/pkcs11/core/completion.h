// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <condition_variable>
#include <memory>
#include <mutex>

namespace Trivex {

/// Where a caller waits for work on another thread: the GUI thread in a nested event loop, so that
/// the window stays alive and questions are answered; every other thread blocked.
class Completion : public QObject {
    Q_OBJECT
public:
    /// The first call ends the waiting; thread-safe.
    void resolve();
    bool isResolved() const;
    /// Returns once resolved, or when the application ends its event loops: look at `isResolved`.
    void wait();

Q_SIGNALS:
    void resolved();

private:
    void block();

    mutable std::mutex m_mutex;
    std::condition_variable m_condition;
    bool m_resolved = false;
};

using CompletionPtr = std::shared_ptr<Completion>;

} // namespace Trivex
