// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <chrono>
#include <mutex>
#include <set>

namespace Trivex {

/// Knows when all modules have been asked for their tokens and these have been read for the first
/// time, or when that has taken longer than `Patience`. Thread-safe.
class FirstScan : public QObject {
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds Patience{3000};

    /// Begins anew, with nothing to be seen.
    void begin();
    /// `what` has to be seen before the first scan is over.
    void expect(const QString &what);
    void fulfil(const QString &what);
    /// To be called now and then: ends the scan when it has taken too long.
    void checkPatience();
    bool isOver() const;

Q_SIGNALS:
    /// Emitted on any thread.
    void over();

private:
    using Lock = std::unique_lock<std::mutex>;
    void finish(Lock lock);

    mutable std::mutex m_mutex;
    std::set<QString> m_expected;
    std::chrono::steady_clock::time_point m_startTime;
    bool m_isOver = false;
};

} // namespace Trivex
