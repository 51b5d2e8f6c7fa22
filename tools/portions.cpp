// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/portions.h"

#include <QElapsedTimer>

#include <utility>

namespace Trivex {

namespace {

/// How long one turn of the event loop may read rows, each of which is decoded for it.
constexpr qint64 PortionMs = 5;

} // namespace

Portions::Portions(std::function<void(int)> read, std::function<void()> done)
    : m_read(std::move(read))
    , m_done(std::move(done))
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(0);
    QObject::connect(&m_pause, &QTimer::timeout, &m_pause, [this] { readOn(); });
}

void Portions::start(int count)
{
    m_count = count;
    m_next = 0;
    readOn();
}

void Portions::stop()
{
    m_pause.stop();
    m_count = 0;
    m_next = 0;
}

double Portions::progress() const
{
    return m_count > 0 ? double(m_next) / m_count : -1;
}

void Portions::readOn()
{
    QElapsedTimer clock;
    clock.start();
    const int end = qMin(m_count, m_next + Most);
    // One at least: a single row is there at once, whatever the machine does meanwhile.
    while (m_next < end) {
        m_read(m_next++);
        if (clock.elapsed() >= PortionMs)
            break;
    }
    if (m_next < m_count) {
        m_pause.start();
        return;
    }
    stop();
    m_done();
}

} // namespace Trivex
