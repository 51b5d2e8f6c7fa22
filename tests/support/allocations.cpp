// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/support/allocations.h"

#include <atomic>
#include <cstddef>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)

qint64 TrivexTest::allocations()
{
    return -1;
}

#else

namespace {

std::atomic<qint64> count{0};

} // namespace

qint64 TrivexTest::allocations()
{
    return count;
}

// The names under which glibc has the allocator that these stand in front of.
extern "C" {

void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t number, std::size_t size);
void *__libc_realloc(void *old, std::size_t size);

void *malloc(std::size_t size)
{
    ++count;
    return __libc_malloc(size);
}

void *calloc(std::size_t number, std::size_t size)
{
    ++count;
    return __libc_calloc(number, size);
}

void *realloc(void *old, std::size_t size)
{
    ++count;
    return __libc_realloc(old, size);
}
}

#endif
