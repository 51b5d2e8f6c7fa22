// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <ctime>

namespace TrivexTest {

/// The time that this thread has worked so far, in nanoseconds: without what it waited, and without
/// what other programs took.
inline qint64 processorTime()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return qint64(time.tv_sec) * 1000000000 + time.tv_nsec;
}

} // namespace TrivexTest
