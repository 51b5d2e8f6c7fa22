// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QHash>
#include <QTimer>

namespace TrivexTest {

/// In nanoseconds.
struct ThreadTime {
    qint64 run = 0;
    qint64 queued = 0; ///< ready to run, and no processor free
};

/// How long this thread's event loop stands still at most: the time between two beats of a timer,
/// less what this thread, or one of ours that it may have waited for, spent ready to run while
/// other programs had the processor (as Linux counts it, `schedstat` in /proc). So waiting for a
/// lock or for another thread counts, and a busy machine does not.
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
    void lookAtThreads();

    QTimer m_timer;
    QElapsedTimer m_sinceLast;
    QElapsedTimer m_sinceLook;
    QHash<QByteArray, qint64> m_queued; ///< ns by thread, as of the last look
    ThreadTime m_own; ///< as of the last beat
    qint64 m_othersQueued = 0; ///< ns, the most of one thread between the last two looks
    int m_beats = 0;
    qint64 m_longest = 0;
    qint64 m_longestByTheClock = 0;
};

} // namespace TrivexTest
