// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/chainwork.h"

#include "qca/base/processend.h"

#include <system_error>
#include <thread>

namespace Trivex {

std::shared_ptr<ChainWork> ChainWork::start(const ChainInput &input, QObject *context,
                                            const Done &done)
{
    if (ProcessEnd::hasBegun())
        return nullptr;
    ProcessEnd::expect();
    ProcessEnd::watchThisThread();
    const auto work = std::make_shared<ChainWork>(input);
    // The connection keeps the work, and the work the connection, until it is used.
    const auto connection = std::make_shared<QMetaObject::Connection>();
    *connection = QObject::connect(
        &work->m_waiter, &Waiter::resolved, context,
        [work, connection, done] {
            QObject::disconnect(*connection);
            done(work->m_result);
        },
        Qt::QueuedConnection);
    try {
        std::thread([self = work]() mutable {
            const ForeignCall libcrypto;
            self->run();
            // It goes before the call ends, after which the process may be gone.
            self.reset();
        }).detach();
    } catch (const std::system_error &) {
        work->run();
    }
    return work;
}

void ChainWork::run()
{
    m_result = checkChain(m_input, m_isCancelled);
    m_waiter.resolve();
}

} // namespace Trivex
