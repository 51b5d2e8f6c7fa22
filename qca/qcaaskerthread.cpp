// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/qcaaskerthread.h"

#include "qca/qcahandler.h"

#include <QDebug>

QcaAskerThread::QcaAskerThread(QObject *parent)
    : QThread(parent)
    , m_handler(nullptr)
{
    setObjectName(QStringLiteral("QcaAskerThread"));
}

QcaAskerThread::~QcaAskerThread()
{
    delete m_handler.loadAcquire();
}

QcaHandler *QcaAskerThread::handler() const
{
    return m_handler.loadAcquire();
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

void QcaAskerThread::run()
{
    qDebug() << objectName() << "is running";
    auto *handler = new QcaHandler;
    delete m_handler.fetchAndStoreOrdered(handler);
    handler->start();
    exec();
}
