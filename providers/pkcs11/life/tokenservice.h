// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/modulewatch.h"
#include "qca/base/processend.h"

namespace Trivex {

/// Fills the table of tokens while it is started. Thread-safe.
class TokenService {
public:
    /// `atEnd` is called at the end of the process and has to stop this service. `tokens` and
    /// `scan` must live until the process ends.
    TokenService(TokenTable &tokens, FirstScan &scan, ProcessEnd::Hook atEnd);

    /// Changes the settings; takes effect within a second when the service is started.
    void configure(const TokenSettings &settings);

    /// Starts to look for tokens and returns at once. Does nothing when the service is started.
    void start();
    /// Closes all tokens. Waits until `deadline` at most for the threads of modules and tokens,
    /// which close their sessions and finalise their modules.
    void stop(Worker::Deadline deadline = std::chrono::steady_clock::now() + ProcessEnd::Patience);

private:
    TokenTable &m_tokens;
    FirstScan &m_scan;
    const ProcessEnd::Hook m_atEnd;
    std::mutex m_mutex;
    TokenSettings m_settings;
    std::shared_ptr<ModuleWatch> m_watch;
};

} // namespace Trivex
