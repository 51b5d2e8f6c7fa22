// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/detachedwork.h"

#include "qca/base/processend.h"

#include <memory>
#include <system_error>
#include <thread>
#include <utility>

namespace Trivex {

bool startDetached(std::function<void()> work)
{
    if (ProcessEnd::hasBegun())
        return false;
    ProcessEnd::expect();
    ProcessEnd::watchThisThread();
    const auto shared = std::make_shared<std::function<void()>>(std::move(work));
    try {
        std::thread([shared]() mutable {
            const ForeignCall call;
            (*shared)();
            // The work's data is destroyed before the call ends, because the process may be gone
            // after that.
            *shared = nullptr;
        }).detach();
    } catch (const std::system_error &) {
        (*shared)();
    }
    return true;
}

} // namespace Trivex
