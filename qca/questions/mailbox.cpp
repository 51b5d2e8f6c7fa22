// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/mailbox.h"

#include <QCoreApplication>
#include <QEvent>

namespace Trivex {

Mailbox::Mailbox(QObject *parent)
    : QObject(parent)
{
}

// By the mutex, as everything else: that the thread has ended was seen by Qt alone.
Mailbox::~Mailbox()
{
    clear();
}

void Mailbox::clear()
{
    std::deque<std::function<void()>> unused;
    const std::lock_guard lock(m_mutex);
    unused.swap(m_functions);
}

void Mailbox::post(std::function<void()> function)
{
    {
        const std::lock_guard lock(m_mutex);
        m_functions.push_back(std::move(function));
    }
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void Mailbox::customEvent(QEvent *)
{
    std::function<void()> function;
    {
        const std::lock_guard lock(m_mutex);
        if (m_functions.empty())
            return;
        function = std::move(m_functions.front());
        m_functions.pop_front();
    }
    function();
}

} // namespace Trivex
