// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace Trivex {

/// Keeps the process alive when a mapped file is cut short by somebody else: touching a page
/// behind the new end raises SIGBUS, which by default ends the process. While a guard lives, such
/// an access within its range reads zeros instead, and the guard remembers it.
///
/// The first guard installs a process-wide SIGBUS handler, which passes on what no guard covers to
/// the handler found, as the system would; where none was set, or where bus errors were ignored, a
/// fault ends the process. Pages must be page-aligned at `begin`. Thread-safe.
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
