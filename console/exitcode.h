// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

namespace Trivex {

/// How the program ends when it works without a window; documented in its manual page.
enum ExitCode {
    Done = 0,
    Failed = 1, ///< a file that can't be read, a token that refuses; the reason is on stderr
    WrongUse = 2, ///< the command line makes no sense
    NotGood = 3, ///< a signature that was checked and is not good
};

} // namespace Trivex
