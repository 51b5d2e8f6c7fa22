// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/chains/chaincheck.h"
#include "qca/questions/waiter.h"

#include <functional>
#include <memory>

namespace Trivex {

/// The check of one path in a thread of its own, which nobody waits for: a certificate made to hurt
/// takes seconds. Held by that thread, too.
class ChainWork : public std::enable_shared_from_this<ChainWork> {
public:
    using Done = std::function<void(const ChainResult &)>;

    /// Calls `done` on the thread of `context`, from its event loop, unless that has gone meanwhile
    /// or the work was cancelled. Null at the end of the process, where nothing is started.
    static std::shared_ptr<ChainWork> start(const ChainInput &input, QObject *context,
                                            const Done &done);
    explicit ChainWork(const ChainInput &input)
        : m_input(input)
    {
    }

    void cancel() { m_isCancelled = true; }

private:
    void run();

    const ChainInput m_input;
    std::atomic<bool> m_isCancelled{false};
    Waiter m_waiter;
    ChainResult m_result;
};

} // namespace Trivex
