// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <functional>
#include <memory>
#include <mutex>

namespace Trivex {

/// Whether the end of one operation has been asked for. Each operation has its own from its start
/// to its end, shared by those who ask and those who do the work; once asked for, it is never taken
/// back, so that a request can't be lost, however early it comes. Thread-safe.
class TRIVEX_QCA_EXPORT Cancellation {
public:
    void request();
    bool isRequested() const;

    /// While one lives, a request calls `end`; one that came before calls it at once. On the
    /// requesting thread, or on that of the constructor; at most one at a time.
    class TRIVEX_QCA_EXPORT Watch {
    public:
        Watch(Cancellation &cancellation, std::function<void()> end);
        ~Watch();
        Watch(const Watch &) = delete;
        Watch &operator=(const Watch &) = delete;

    private:
        Cancellation &m_cancellation;
    };

private:
    mutable std::mutex m_mutex;
    bool m_requested = false;
    std::function<void()> m_end;
};

using CancellationPtr = std::shared_ptr<Cancellation>;

} // namespace Trivex
