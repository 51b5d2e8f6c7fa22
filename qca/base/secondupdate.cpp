// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/secondupdate.h"

#include <QTimer>

namespace Trivex {

namespace {

/// Long enough for models to have seen the first update.
constexpr std::chrono::milliseconds Pause{150};

} // namespace

void announceAgain(QCA::KeyStoreListContext *list, int store)
{
    QTimer::singleShot(Pause, list, [list, store] { Q_EMIT list->storeUpdated(store); });
}

} // namespace Trivex
