// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QThread>

namespace Trivex {

/// Gives a QCA context the thread that it was made in. QCA takes contexts out of every thread, for
/// which Qt allocates a record for each of them, larger than an entry of a store. Contexts get no
/// events, so it does not matter which thread they name, nor whether that one still runs.
inline void shareThreadRecord(QObject *context)
{
    context->moveToThread(QThread::currentThread());
}

} // namespace Trivex
