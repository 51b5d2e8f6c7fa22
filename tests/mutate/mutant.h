// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

// Included before everything else by a build that tests/mutate has seeded with changes. Each change
// has a number and is made where `trivexMutant(number)` says so; without TRIVEX_MUTANT in the
// environment none is, and the program is the one that was written.

#include <atomic>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

namespace TrivexMutate {

constexpr int MostMutants = 1 << 18;

/// Writes each number at its first use to the file TRIVEX_MUTANT_LOG: which test reaches what.
inline void note(int number)
{
    static const char *const log = std::getenv("TRIVEX_MUTANT_LOG");
    static std::atomic<bool> seen[MostMutants];
    if (!log || seen[number].exchange(true))
        return;
    char line[16];
    const int length = std::snprintf(line, sizeof line, "%d\n", number);
    const int file = ::open(log, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
    if (file < 0 || ::write(file, line, static_cast<size_t>(length)) != length)
        std::abort();
    ::close(file);
}

inline int chosen()
{
    static const char *const text = std::getenv("TRIVEX_MUTANT");
    static const int number = text ? std::atoi(text) : 0;
    return number;
}

} // namespace TrivexMutate

inline bool trivexMutant(int number)
{
    TrivexMutate::note(number);
    return TrivexMutate::chosen() == number;
}
