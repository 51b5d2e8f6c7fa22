// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <atomic>

namespace Trivex {

/// Shared by work on a long file and its caller: how far the work is, and whether anybody
/// still wants it. Thread-safe.
class LongWork {
public:
    void cancel() { m_isCancelled = true; }
    bool isCancelled() const { return m_isCancelled; }

    /// The bytes that are going to be read in all, each reading counted.
    void expect(qint64 bytes) { m_expected = bytes; }
    void advance(qint64 bytes) { m_done += bytes; }
    /// From 0 to 1; -1 while it is not known.
    double progress() const
    {
        const qint64 expected = m_expected;
        return expected <= 0 ? -1 : qMin(1.0, double(m_done) / double(expected));
    }

private:
    std::atomic<bool> m_isCancelled{false};
    std::atomic<qint64> m_expected{0};
    std::atomic<qint64> m_done{0};
};

} // namespace Trivex
