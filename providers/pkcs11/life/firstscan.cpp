// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/firstscan.h"

#include <utility>

namespace Trivex {

FirstScan::FirstScan(std::function<Clock::time_point()> now)
    : m_now(std::move(now))
{
}

void FirstScan::begin()
{
    const Lock lock(m_mutex);
    m_isOver = false;
    m_expected.clear();
    m_startTime = m_now();
}

void FirstScan::expect(const QString &what)
{
    const Lock lock(m_mutex);
    if (!m_isOver)
        m_expected.insert(what);
}

void FirstScan::fulfil(const QString &what)
{
    Lock lock(m_mutex);
    m_expected.erase(what);
    if (m_expected.empty())
        finish(std::move(lock));
}

void FirstScan::checkPatience()
{
    Lock lock(m_mutex);
    if (m_now() - m_startTime >= Patience)
        finish(std::move(lock));
}

bool FirstScan::isOver() const
{
    const Lock lock(m_mutex);
    return m_isOver;
}

void FirstScan::finish(Lock lock)
{
    if (std::exchange(m_isOver, true))
        return;
    lock.unlock();
    Q_EMIT over();
}

} // namespace Trivex
