// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/qcaaskerthread.h"

#include "qca/questions/qcahandler.h"

#include <QDebug>
#include <QElapsedTimer>

namespace {

constexpr qint64 StartPatience = 1000; // ms

} // namespace

QcaAskerThread::QcaAskerThread(QObject *parent)
    : QThread(parent)
{
    setObjectName(QStringLiteral("QcaAskerThread"));
}

QcaAskerThread::~QcaAskerThread()
{
    // Its end answers what it has left open, and nobody is told of anything under a lock.
    takeHandler(nullptr);
}

QcaHandler *QcaAskerThread::handler() const
{
    const std::lock_guard lock(m_mutex);
    return m_handler.get();
}

QcaHandler *QcaAskerThread::startedHandler() const
{
    QElapsedTimer timer;
    timer.start();
    while (!handler() && isRunning() && timer.elapsed() < StartPatience)
        msleep(1);
    return handler();
}

void QcaAskerThread::letGo(QcaAskerThread *thread, unsigned long milliseconds)
{
    thread->quit();
    if (thread->wait(milliseconds)) {
        delete thread;
        return;
    }
    thread->setParent(nullptr);
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    // It may have ended between the two lines above.
    if (thread->isFinished())
        thread->deleteLater();
}

std::unique_ptr<QcaHandler> QcaAskerThread::takeHandler(std::unique_ptr<QcaHandler> next)
{
    // `wait()` has ordered the destructor's call behind the thread; the lock says so to thread
    // sanitizers too.
    const std::lock_guard lock(m_mutex);
    m_handler.swap(next);
    return next;
}

void QcaAskerThread::run()
{
    qDebug() << objectName() << " is running";
    auto handler = std::make_unique<QcaHandler>();
    // Before anybody sees it: answers stored in one that is not asked yet would not be found.
    handler->start();
    takeHandler(std::move(handler));
    exec();
    const std::lock_guard lock(m_mutex); // the counterpart of the destructor's
}
