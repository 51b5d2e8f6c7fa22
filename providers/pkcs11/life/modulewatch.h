// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/modulehost.h"

#include <map>

namespace Trivex {

/// The settings of the token providers.
struct TokenSettings {
    /// Paths of module libraries, separated by ";"; empty: the modules that p11-kit's configuration
    /// names. A path may be followed by "|" and parameters for the module's C_Initialize.
    QString modules;
    /// Lists trust anchors as a system store.
    bool allowRootCa = false;
    /// An unused login ends after this time; with 0 only with the session. A change counts for
    /// tokens that come later.
    Worker::Milliseconds loginLifetime{0};
    /// Keeps what tokens show to anybody in the user's cache directory, see `TokenCache`.
    bool rememberTokens = false;
};

/// Keeps one `ModuleHost` running for each module that is present. A thread of its own looks at the
/// module files twice a second, so that a module comes and goes with its file. Thread-safe.
class ModuleWatch {
public:
    /// `tokens` and `scan` must live until the process ends.
    ModuleWatch(const TokenSettings &settings, TokenTable &tokens, FirstScan &scan);
    ~ModuleWatch();

    void start();
    /// Changes the settings; takes effect at the next look.
    void configure(const TokenSettings &settings);
    /// Closes all hosts and does not wait for their threads.
    void stop();

private:
    struct State;
    static void look(State &state);

    std::shared_ptr<State> m_state;
    Worker m_worker;
};

} // namespace Trivex
