// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/background.h"

#include "qca/base/processend.h"
#include "qca/questions/waiter.h"

#include <memory>
#include <system_error>
#include <thread>

namespace Trivex {

void runInBackground(std::function<void()> work, QObject *context, std::function<void()> then)
{
    if (ProcessEnd::hasBegun())
        return;
    ProcessEnd::expect();
    ProcessEnd::watchThisThread();
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
    auto shared = std::make_shared<std::function<void()>>(std::move(work));
    const auto run = [](std::shared_ptr<std::function<void()>> &owned,
                        const std::shared_ptr<Waiter> &done) {
        (*owned)();
        // What it holds goes on this thread, before anybody hears of its end.
        owned.reset();
        done->resolve();
    };
    try {
        std::thread([run, owned = shared, done = waiter]() mutable {
            const ForeignCall libcrypto;
            run(owned, done);
            // It goes before the call ends, after which the process may be gone.
            done.reset();
        }).detach();
    } catch (const std::system_error &) {
        run(shared, waiter);
    }
}

} // namespace Trivex
