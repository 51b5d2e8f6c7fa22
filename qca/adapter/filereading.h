// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/adapter/filecontents.h"
#include "qca/base/regularfile.h"
#include "qca/questions/waiter.h"

#include <atomic>
#include <memory>

namespace Trivex {

/// Finds out what a file holds, in a thread of its own: thousands of certificates or keys take
/// seconds. Held by that thread, too.
class TRIVEX_QCA_EXPORT FileReading : public std::enable_shared_from_this<FileReading> {
public:
    explicit FileReading(const QString &path);

    /// Once. A file of some kilobytes, as most are, has been read when this returns. At the end of
    /// the process nothing is started, and the waiter is never resolved.
    void start();
    /// Asks it to end; it does after what it is at. Thread-safe.
    void stop() { m_stopped = true; }
    /// Resolved when it is done, or has been stopped.
    Waiter &waiter() { return m_waiter; }

    // Once resolved.

    FileProblem problem() const { return m_problem; }
    /// There was nothing in it.
    bool wasEmpty() const { return m_wasEmpty; }
    const FileContents &contents() const { return m_contents; }

private:
    void run();

    const QString m_path;
    Waiter m_waiter;
    std::atomic_bool m_stopped{false};
    FileProblem m_problem = FileProblem::None;
    bool m_wasEmpty = false;
    FileContents m_contents;
};

} // namespace Trivex
