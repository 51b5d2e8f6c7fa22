// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>

#include <functional>

namespace Trivex {

/// Reads many rows on the GUI thread without stopping the window: some in one turn of the event
/// loop, the next ones in another. Not thread-safe.
class Portions {
public:
    /// So many rows are read in one turn at most.
    static constexpr int Most = 256;

    /// `read` gets each row in turn, `done` is called behind the last.
    Portions(std::function<void(int row)> read, std::function<void()> done);

    /// Reads the first portion at once.
    void start(int count);
    /// Neither of the functions is called any more.
    void stop();
    /// From 0 to 1; -1 while nothing is being read.
    double progress() const;

private:
    void readOn();

    const std::function<void(int)> m_read;
    const std::function<void()> m_done;
    QTimer m_pause;
    int m_count = 0;
    int m_next = 0; ///< where reading goes on
};

} // namespace Trivex
