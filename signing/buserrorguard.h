// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace Trivex {

/// Keeps the process alive when another process cuts a mapped file short: reading a page behind the
/// new end raises SIGBUS, which by default ends the process. While a guard lives, such a read
/// within its range gives zeros instead, and the guard remembers it.
///
/// The first guard installs a process-wide SIGBUS handler. It passes signals that no guard covers
/// on to the earlier handler, as the system would; if there was none, or if bus errors were
/// ignored, a fault ends the process. `begin` must be page-aligned. Thread-safe.
class BusErrorGuard {
public:
    BusErrorGuard(const void *begin, std::size_t size);
    /// The range must not be touched through this mapping any more.
    ~BusErrorGuard();
    BusErrorGuard(const BusErrorGuard &) = delete;
    BusErrorGuard &operator=(const BusErrorGuard &) = delete;

    /// True once a read found the file cut short; the bytes are not those of the file then.
    bool isDamaged() const;

    struct Region;

private:
    Region *m_region;
};

} // namespace Trivex
