// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace TrivexTest {

/// What a TestToken needs and is not installed; empty when everything is.
QString missingTokenTools();

} // namespace TrivexTest

/// Skips the QtTest test, aloud, where no token can be made; that SoftHSM refuses to is a failure.
#define TRIVEX_NEED_TOKENS()                                                                       \
    do {                                                                                           \
        if (!TrivexTest::missingTokenTools().isEmpty())                                            \
            QSKIP(qPrintable(TrivexTest::missingTokenTools()));                                    \
    } while (false)
