// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/firstscan.h"

namespace Trivex {

/// Ends the first scan when its patience is over. The thread that looks for modules may be held up
/// by one, so somebody else has to look. Lives on the thread that starts it.
class TRIVEX_TOKENS_EXPORT ScanWatch : public QObject {
    Q_OBJECT
public:
    /// Calls `done` once after about `delay`, while `context` lives, on its thread.
    using Timer = std::function<void(std::chrono::milliseconds delay, QObject *context,
                                     std::function<void()> done)>;

    /// `scan` outlives the watch. Without a timer Qt's is used.
    explicit ScanWatch(FirstScan &scan, Timer timer = {});

    void start();

private:
    void look();
    void lookAfter(std::chrono::milliseconds delay);

    FirstScan &m_scan;
    const Timer m_timer;
};

} // namespace Trivex
