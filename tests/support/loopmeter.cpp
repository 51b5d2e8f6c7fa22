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

/// The time that a thread has spent waiting for a processor; 0 where the system doesn't count it,
/// which makes the meter stricter.
qint64 queuedTime(const QString &thread)
{
    QFile file(thread + QStringLiteral("/schedstat"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> numbers = file.readAll().simplified().split(' ');
    return numbers.size() > 1 ? numbers.at(1).toLongLong() : 0;
}

qint64 ownQueuedTime()
{
    return queuedTime(QStringLiteral("/proc/thread-self"));
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
    m_ownQueued = ownQueuedTime();
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
        const qint64 now = queuedTime(all.filePath(thread));
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
    const qint64 queued = ownQueuedTime();
    qint64 foreign = queued - m_ownQueued;
    if (m_sinceLook.hasExpired(LookPause)) {
        lookAtThreads();
        // The look may reach back before the last beat, by no more than its pause.
        if (elapsed > LookPause * Nanoseconds)
            foreign = std::max(foreign, std::min(m_othersQueued, elapsed));
    }
    m_longestByTheClock = std::max(m_longestByTheClock, elapsed / Nanoseconds);
    m_longest = std::max(m_longest, (elapsed - foreign) / Nanoseconds);
    m_ownQueued = ownQueuedTime();
    m_sinceLast.start();
}

} // namespace TrivexTest
