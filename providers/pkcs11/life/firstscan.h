// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/tokensexport.h"

#include <QObject>
#include <QStringList>

#include <chrono>
#include <functional>
#include <map>
#include <mutex>

namespace Trivex {

/// Knows when every module has listed its tokens once and every token has been read once, or when
/// that has taken longer than `Patience`. QCA counts its key stores as started then. It goes on to
/// know which modules have not listed their tokens. Thread-safe.
class TRIVEX_TOKENS_EXPORT FirstScan : public QObject {
    Q_OBJECT
public:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds Patience{3000};

    /// `now` may be called on any thread.
    explicit FirstScan(std::function<Clock::time_point()> now = &Clock::now);

    enum Kind { Module, Token };

    /// Starts a new scan, which expects nothing yet.
    void begin();
    /// The scan does not end before `what`, the key of a module or the id of a store, is fulfilled.
    void expect(const QString &what, Kind kind = Module);
    void fulfil(const QString &what);
    /// The keys of the modules that are expected still, sorted; also when the scan is over.
    QStringList silentModules() const;
    /// Ends the scan when it has taken longer than `Patience`. Call it regularly.
    void checkPatience();
    bool isOver() const;

Q_SIGNALS:
    // Emitted on any thread.
    void over();
    void moduleFulfilled();

private:
    using Lock = std::unique_lock<std::mutex>;
    void finish(Lock lock);

    mutable std::mutex m_mutex;
    std::map<QString, Kind> m_expected;
    const std::function<Clock::time_point()> m_now;
    Clock::time_point m_startTime;
    bool m_isOver = false;
};

} // namespace Trivex
