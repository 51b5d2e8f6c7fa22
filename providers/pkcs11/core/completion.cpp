// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/core/completion.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>

namespace Trivex {

namespace {

bool isGuiThread()
{
    const QCoreApplication *application = QCoreApplication::instance();
    return application && application->thread() == QThread::currentThread();
}

} // namespace

void Completion::resolve()
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_resolved)
            return;
        m_resolved = true;
        m_condition.notify_all();
    }
    Q_EMIT resolved();
}

bool Completion::isResolved() const
{
    const std::lock_guard lock(m_mutex);
    return m_resolved;
}

void Completion::wait()
{
    if (!isGuiThread()) {
        block();
        return;
    }
    QEventLoop loop;
    // Queued, so that what is resolved between these lines still ends the loop.
    connect(this, &Completion::resolved, &loop, &QEventLoop::quit, Qt::QueuedConnection);
    if (!isResolved())
        loop.exec();
}

void Completion::block()
{
    std::unique_lock lock(m_mutex);
    m_condition.wait(lock, [this] { return m_resolved; });
}

} // namespace Trivex
