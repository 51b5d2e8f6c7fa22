// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/qcaaskerthread.h"

#include "qca/qcahandler.h"

#include <QDebug>

QcaAskerThread::QcaAskerThread(QObject *parent)
    : QThread(parent)
{
    setObjectName(QStringLiteral("QcaAskerThread"));
}

QcaAskerThread::~QcaAskerThread()
{
    // `wait()` has ordered this behind the thread; the lock says so to thread sanitizers too.
    const std::lock_guard locker(m_mutex);
    m_handler.reset();
}

QcaHandler *QcaAskerThread::handler() const
{
    const std::lock_guard locker(m_mutex);
    return m_handler.get();
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

QcaHandler *QcaAskerThread::replaceHandler()
{
    const std::lock_guard locker(m_mutex);
    m_handler = std::make_unique<QcaHandler>();
    return m_handler.get();
}

void QcaAskerThread::run()
{
    qDebug() << objectName() << " is running";
    QcaHandler *handler = replaceHandler();
    handler->start();
    exec();
    const std::lock_guard locker(m_mutex); // the counterpart of the destructor's
}
