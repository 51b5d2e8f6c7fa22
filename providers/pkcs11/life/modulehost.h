// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/tokentable.h"

#include <memory>

namespace Trivex {

/// Runs one module: initialises it and asks for its slots twice a second, in a thread of its own,
/// so that a slow module holds up nobody else. C_WaitForSlotEvent is not used, because blocked in
/// it a thread can't be ended without finalising the module for the whole process.
class ModuleHost {
public:
    /// Puts the module's tokens into `tokens`, which has to live as long as the process does, and
    /// so has `scan`.
    ModuleHost(Pkcs11::ModuleSource source, TokenTable &tokens, FirstScan &scan);
    ~ModuleHost();

    void start();
    /// Takes its tokens away at once, even while the module hangs. Does not wait: the last jobs of
    /// the tokens' threads and of its own close the sessions and finalise the module.
    void close();

private:
    struct State;

    FirstScan &m_scan;
    std::shared_ptr<State> m_state;
    Worker m_worker;
};

} // namespace Trivex
