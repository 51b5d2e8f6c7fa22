// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/support/loopmeter.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace TrivexTest {

namespace {

constexpr int Beat = 2; // ms
/// The other threads are looked at so often, and when the loop has stood still for as long.
constexpr int LookPause = 20; // ms
constexpr qint64 Nanoseconds = 1000000; // in a millisecond

/// The time that a thread has spent on a processor, and waiting for one; 0 where the system doesn't
/// count it, which makes the meter stricter.
ThreadTime timeOf(const QString &thread)
{
    QFile file(thread + QStringLiteral("/schedstat"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QList<QByteArray> numbers = file.readAll().simplified().split(' ');
    if (numbers.size() < 2)
        return {};
    return {numbers.at(0).toLongLong(), numbers.at(1).toLongLong()};
}

ThreadTime ownTime()
{
    return timeOf(QStringLiteral("/proc/thread-self"));
}

} // namespace

LoopMeter::LoopMeter()
{
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &LoopMeter::beat);
}

void LoopMeter::start()
{
    m_beats = 0;
    m_longest = 0;
    m_longestByTheClock = 0;
    lookAtThreads();
    m_own = ownTime();
    m_sinceLast.start();
    m_timer.start(Beat);
}

void LoopMeter::lookAtThreads()
{
    QHash<QByteArray, qint64> queued;
    m_othersQueued = 0;
    const QDir all(QStringLiteral("/proc/self/task"));
    const QStringList threads = all.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &thread : threads) {
        const qint64 now = timeOf(all.filePath(thread)).queued;
        queued.insert(thread.toLatin1(), now);
        m_othersQueued = std::max(m_othersQueued, now - m_queued.value(thread.toLatin1(), 0));
    }
    m_queued = queued;
    m_sinceLook.start();
}

void LoopMeter::beat()
{
    ++m_beats;
    const qint64 elapsed = m_sinceLast.nsecsElapsed();
    const ThreadTime own = ownTime();
    const qint64 queued = own.queued - m_own.queued;
    qint64 foreign = queued;
    if (m_sinceLook.hasExpired(LookPause)) {
        lookAtThreads();
        // What another thread waited counts for as long as this one was blocked, and no longer: the
        // loop's own work is its own. The look may reach back before the last beat, by no more
        // than its pause.
        const qint64 blocked = elapsed - (own.run - m_own.run) - queued;
        if (elapsed > LookPause * Nanoseconds)
            foreign += std::max(qint64(0), std::min(m_othersQueued, blocked));
    }
    m_longestByTheClock = std::max(m_longestByTheClock, elapsed / Nanoseconds);
    m_longest = std::max(m_longest, (elapsed - foreign) / Nanoseconds);
    m_own = ownTime();
    m_sinceLast.start();
}

} // namespace TrivexTest
