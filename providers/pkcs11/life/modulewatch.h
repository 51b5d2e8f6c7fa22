// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/modulehost.h"

#include <map>

namespace Trivex {

/// How the token providers are set up.
struct TokenSettings {
    /// Paths of module libraries, separated by ";"; empty: the modules that p11-kit's configuration
    /// names. A path may be followed by "|" and parameters for the module's C_Initialize.
    QString modules;
    /// Lists trust anchors as a system store.
    bool allowRootCa = false;
    /// After which an unused login ends; 0: with the session. Of tokens that come afterwards.
    Worker::Milliseconds loginLifetime{0};
};

/// Keeps one host running for each module that is present. Looks at the module files twice a
/// second, in a thread of its own, so that a module comes and goes with its file.
class ModuleWatch {
public:
    /// `tokens` and `scan`: as for `ModuleHost`.
    ModuleWatch(const TokenSettings &settings, TokenTable &tokens, FirstScan &scan);
    ~ModuleWatch();

    void start();
    void configure(const TokenSettings &settings);
    /// Lets all modules go; does not wait for their threads.
    void stop();

private:
    struct State;
    static void look(State &state);

    std::shared_ptr<State> m_state;
    Worker m_worker;
};

} // namespace Trivex
