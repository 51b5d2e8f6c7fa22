// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/background.h"

#include "qca/base/detachedwork.h"
#include "qca/questions/waiter.h"

#include <memory>

namespace Trivex {

void runInBackground(std::function<void()> work, QObject *context, std::function<void()> then)
{
    auto waiter = std::make_shared<Waiter>();
    // The connection keeps the waiter, and the waiter the connection, until it is used.
    const auto connection = std::make_shared<QMetaObject::Connection>();
    *connection = QObject::connect(
        waiter.get(), &Waiter::resolved, context,
        [waiter, connection, then = std::move(then)] {
            QObject::disconnect(*connection);
            then();
        },
        Qt::QueuedConnection);
    auto owned = std::make_shared<std::function<void()>>(std::move(work));
    const bool isStarted = startDetached([owned = std::move(owned), waiter]() mutable {
        (*owned)();
        // The work is destroyed on this thread, before anybody hears of its end.
        owned.reset();
        waiter->resolve();
    });
    if (!isStarted)
        QObject::disconnect(*connection);
}

} // namespace Trivex
