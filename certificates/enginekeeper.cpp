// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/enginekeeper.h"

#include <QEvent>
#include <QQmlEngine>

EngineKeeper::EngineKeeper(const QObject *object)
    : m_engine(qjsEngine(object))
{
    if (!m_engine)
        m_engine = qmlEngine(object);
    if (m_engine)
        m_engine->installEventFilter(this);
}

EngineKeeper::~EngineKeeper()
{
    if (m_engine && m_isToGo)
        m_engine->deleteLater();
}

bool EngineKeeper::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_engine || event->type() != QEvent::DeferredDelete)
        return false;
    m_isToGo = true;
    return true;
}
