// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace TrivexTest {

/// How often this process has asked for memory, all threads and libraries together: a measure of
/// work that no other program disturbs. -1 where the sanitizers have taken the allocator over.
/// A program that uses it has `allocations.cpp` among its own sources, so that the linker takes
/// its functions before those of the C library.
qint64 allocations();

} // namespace TrivexTest
