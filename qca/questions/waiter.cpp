// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/waiter.h"

#include "qca/questions/cancellationscope.h"
#include "qca/questions/generationtarget.h"
#include "qca/questions/questionscope.h"

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

bool Waiter::resolve()
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_resolved)
            return false;
        m_resolved = true;
        m_condition.notify_all();
    }
    Q_EMIT resolved();
    return true;
}

bool Waiter::isResolved() const
{
    const std::lock_guard lock(m_mutex);
    return m_resolved;
}

bool Waiter::settles(std::chrono::milliseconds patience)
{
    std::unique_lock lock(m_mutex);
    return m_condition.wait_for(lock, patience, [this] { return m_resolved; });
}

void Waiter::wait()
{
    if (isGuiThread())
        waitInEventLoop();
    else
        block();
}

void Waiter::waitInEventLoop()
{
    const QuestionScope nobody(nullptr);
    const GenerationTarget::None nowhere;
    const CancellationScope noTask(nullptr);
    QEventLoop loop;
    // Queued, so that what is resolved between these lines still ends the loop, and behind what the
    // resolving thread has told this one before: why an operation failed is known when it returns.
    connect(this, &Waiter::resolved, &loop, &QEventLoop::quit, Qt::QueuedConnection);
    if (isResolved())
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    loop.exec();
}

void Waiter::block()
{
    std::unique_lock lock(m_mutex);
    m_condition.wait(lock, [this] { return m_resolved; });
}

} // namespace Trivex
