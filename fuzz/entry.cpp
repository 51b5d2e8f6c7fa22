// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT

// The two functions that libFuzzer calls.
#include "fuzz/process.h"
#include "fuzz/target.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    TrivexFuzz::prepareProcess();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // A copy of its own size, so that reading beyond it is noticed.
    TrivexFuzz::take(QByteArray(reinterpret_cast<const char *>(data), int(size)));
    return 0;
}
