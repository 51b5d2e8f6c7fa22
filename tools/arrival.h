// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/questions/mailbox.h"

#include <memory>
#include <mutex>

namespace Trivex {

/// Where another thread puts a result for an object that may have gone by then. Shared by both;
/// made and closed on the object's thread.
class Arrival {
public:
    /// Runs `function` on the object's thread, unless it has closed this. Thread-safe.
    void post(std::function<void()> function)
    {
        const std::lock_guard lock(m_mutex);
        if (m_mailbox)
            m_mailbox->post(std::move(function));
    }
    void close()
    {
        const std::lock_guard lock(m_mutex);
        m_mailbox.reset();
    }

private:
    std::mutex m_mutex;
    std::unique_ptr<Mailbox, Mailbox::DeleteLater> m_mailbox{new Mailbox};
};

} // namespace Trivex
