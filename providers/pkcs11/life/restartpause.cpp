// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/restartpause.h"

#include <algorithm>

namespace Trivex {

void RestartPause::failed(Clock::time_point now)
{
    interrupt();
    m_until = now + m_next;
    m_next = std::min(2 * m_next, m_longest);
}

void RestartPause::works(Clock::time_point now)
{
    if (!m_since)
        m_since = now;
    else if (now - *m_since >= StableTime)
        m_next = Shortest;
}

} // namespace Trivex
