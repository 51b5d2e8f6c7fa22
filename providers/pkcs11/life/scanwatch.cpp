// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/scanwatch.h"

#include <QTimer>

#include <utility>

namespace Trivex {

namespace {

/// Between two looks whether the first scan has taken too long.
constexpr std::chrono::milliseconds Pause{50};

void waitPrecisely(std::chrono::milliseconds delay, QObject *context, std::function<void()> done)
{
    QTimer::singleShot(delay, Qt::PreciseTimer, context, std::move(done));
}

} // namespace

ScanWatch::ScanWatch(FirstScan &scan, Timer timer)
    : m_scan(scan)
    , m_timer(timer ? std::move(timer) : Timer(&waitPrecisely))
{
}

void ScanWatch::start()
{
    lookAfter(FirstScan::Patience);
}

// Until the scan is over: a timer may be early, however little.
void ScanWatch::look()
{
    m_scan.checkPatience();
    if (!m_scan.isOver())
        lookAfter(Pause);
}

void ScanWatch::lookAfter(std::chrono::milliseconds delay)
{
    m_timer(delay, this, [this] { look(); });
}

} // namespace Trivex
