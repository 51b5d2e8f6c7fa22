// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/cancellation.h"

#include <utility>

namespace Trivex {

void Cancellation::request()
{
    std::function<void()> end;
    {
        const std::lock_guard lock(m_mutex);
        m_requested = true;
        end = std::exchange(m_end, {});
    }
    if (end)
        end();
}

bool Cancellation::isRequested() const
{
    const std::lock_guard lock(m_mutex);
    return m_requested;
}

Cancellation::Watch::Watch(Cancellation &cancellation, std::function<void()> end)
    : m_cancellation(cancellation)
{
    {
        const std::lock_guard lock(m_cancellation.m_mutex);
        if (!m_cancellation.m_requested) {
            m_cancellation.m_end = std::move(end);
            return;
        }
    }
    end();
}

Cancellation::Watch::~Watch()
{
    std::function<void()> unused;
    const std::lock_guard lock(m_cancellation.m_mutex);
    unused.swap(m_cancellation.m_end);
}

} // namespace Trivex
