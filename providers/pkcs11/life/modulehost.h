// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/tokentable.h"

#include <memory>

namespace Trivex {

/// Runs one module in a thread of its own, so that a slow module delays no other. It initialises
/// the module and asks for its slots twice a second. It does not use C_WaitForSlotEvent, because a
/// thread that is blocked in it ends only when the module is finalised for the whole process.
class ModuleHost {
public:
    /// The host adds the module's tokens to `tokens` and fulfils what `scan` expects of it. Both
    /// must live until the process ends.
    ModuleHost(Pkcs11::ModuleSource source, TokenTable &tokens, FirstScan &scan);
    ~ModuleHost();

    /// Starts the thread and returns at once.
    void start();
    /// Removes the module's tokens from the table at once, even while the module hangs, and does
    /// not wait. The last jobs of the threads close the sessions and finalise the module.
    void close();

private:
    struct State;

    FirstScan &m_scan;
    std::shared_ptr<State> m_state;
    Worker m_worker;
    bool m_isStarted = false;
};

} // namespace Trivex
