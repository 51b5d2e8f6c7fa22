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

void FirstScan::expect(const QString &what, Kind kind)
{
    const Lock lock(m_mutex);
    m_expected.emplace(what, kind);
}

void FirstScan::fulfil(const QString &what)
{
    Lock lock(m_mutex);
    const auto found = m_expected.find(what);
    const bool isModule = found != m_expected.end() && found->second == Module;
    m_expected.erase(what);
    const bool isLast = m_expected.empty();
    if (isLast)
        finish(std::move(lock));
    else
        lock.unlock();
    if (isModule)
        Q_EMIT moduleFulfilled();
}

QStringList FirstScan::silentModules() const
{
    const Lock lock(m_mutex);
    QStringList silent;
    for (const auto &[what, kind] : m_expected) {
        if (kind == Module)
            silent += what;
    }
    return silent;
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
