// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/modulewatch.h"
#include "qca/base/processend.h"

namespace Trivex {

/// Keeps the table of tokens filled while it is started. Thread-safe.
class TokenService {
public:
    /// `atEnd` is called at the end of the process and has to stop this service. Table and scan
    /// have to live as long as the process does.
    TokenService(TokenTable &tokens, FirstScan &scan, ProcessEnd::Hook atEnd);

    /// May be called while started; takes effect within a second.
    void configure(const TokenSettings &settings);

    /// Begins to look for tokens; returns at once. Nothing when started already.
    void start();
    /// Lets all tokens go. Waits for the threads of modules and tokens, which close their sessions
    /// and finalise their modules, but not longer than until `deadline`.
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
