// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/pause.h"

#include <atomic>

namespace Trivex {

namespace {

std::atomic<int> divisor{1};

} // namespace

int Pause::milliseconds() const
{
    return m_milliseconds / divisor;
}

void Pause::shorten(int times)
{
    divisor = times;
}

} // namespace Trivex
