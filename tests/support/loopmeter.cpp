// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/support/loopmeter.h"

#include <QFile>

#include <algorithm>

namespace TrivexTest {

namespace {

constexpr int Beat = 2; // ms
constexpr qint64 Nanoseconds = 1000000; // in a millisecond

/// The time that the calling thread has spent waiting for a processor; 0 where the system doesn't
/// count it, which makes the meter stricter.
qint64 queuedTime()
{
    QFile file(QStringLiteral("/proc/thread-self/schedstat"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> numbers = file.readAll().simplified().split(' ');
    return numbers.size() > 1 ? numbers.at(1).toLongLong() : 0;
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
    m_queued = queuedTime();
    m_sinceLast.start();
    m_timer.start(Beat);
}

void LoopMeter::beat()
{
    ++m_beats;
    const qint64 queued = queuedTime();
    const qint64 elapsed = m_sinceLast.nsecsElapsed();
    m_sinceLast.start();
    m_longestByTheClock = std::max(m_longestByTheClock, elapsed / Nanoseconds);
    m_longest = std::max(m_longest, (elapsed - (queued - m_queued)) / Nanoseconds);
    m_queued = queued;
}

} // namespace TrivexTest
