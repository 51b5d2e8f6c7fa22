// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/tokens/rememberedtokens.h"

#include <atomic>

namespace Trivex {

namespace {

std::atomic_bool isOn{false};

} // namespace

void setTokensRemembered(bool on)
{
    isOn = on;
}

bool tokensAreRemembered()
{
    return isOn;
}

} // namespace Trivex
