// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QTimer>

namespace TrivexTest {

/// How long this thread's event loop stands still at most: the time between two beats of a timer,
/// less what the thread spent ready to run while other programs had the processor (as Linux counts
/// it, `/proc/thread-self/schedstat`). Waiting for a lock or for another thread counts.
class LoopMeter : public QObject {
public:
    /// What nobody notices, in milliseconds; instrumented code has ten times as long.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    static constexpr qint64 Unnoticed = 1000;
#else
    static constexpr qint64 Unnoticed = 100;
#endif

    LoopMeter();

    /// Forgets what was and begins.
    void start();
    void stop()
    {
        m_timer.stop();
    }
    /// How often the loop has turned since the start.
    int beats() const
    {
        return m_beats;
    }
    /// In milliseconds.
    qint64 longest() const
    {
        return m_longest;
    }
    /// The same with the time that other programs took.
    qint64 longestByTheClock() const
    {
        return m_longestByTheClock;
    }

private:
    void beat();

    QTimer m_timer;
    QElapsedTimer m_sinceLast;
    qint64 m_queued = 0; // ns
    int m_beats = 0;
    qint64 m_longest = 0;
    qint64 m_longestByTheClock = 0;
};

} // namespace TrivexTest
