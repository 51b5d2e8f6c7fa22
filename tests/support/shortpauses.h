// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/pause.h"

namespace TrivexTest {

/// For test programs whose subject is not how long the module's pauses are: a tenth of a second is
/// then as good as three. All pauses keep their proportions.
inline void shortenPauses()
{
    Trivex::Pause::shorten(20);
}

} // namespace TrivexTest
