// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/tokenkeywork.h"

namespace Trivex {

TokenKeyWork::TokenKeyWork(QObject *parent)
    : QObject(parent)
{
    connect(&m_writer, &StoreWriter::removed, this, &TokenKeyWork::end);
    connect(&m_writer, &StoreWriter::shown, this, &TokenKeyWork::end);
}

bool TokenKeyWork::remove(const QString &storeId, const QString &keyId)
{
    return !m_isRunning && begin(m_writer.removeKey(storeId, keyId));
}

bool TokenKeyWork::show(const QString &storeId)
{
    return !m_isRunning && begin(m_writer.showKeys(storeId));
}

bool TokenKeyWork::begin(bool hasStarted)
{
    if (!hasStarted)
        return false;
    m_isRunning = true;
    Q_EMIT runningChanged();
    return true;
}

void TokenKeyWork::end(bool succeeded)
{
    m_isRunning = false;
    Q_EMIT runningChanged();
    Q_EMIT finished(succeeded);
}

void TokenKeyWork::cancel()
{
    if (m_isRunning)
        m_writer.cancel();
}

} // namespace Trivex
