// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace TrivexFuzz {

/// Hands arbitrary bytes to one part of the code. Anything may come of it but a crash, a memory
/// error, a leak, undefined behaviour, or time and memory beyond all proportion. Where more can be
/// said of the result, `check` says it. Called again and again in one process, on the GUI thread.
void take(const QByteArray &input);

/// Ends the process with a message when `holds` is false, in every build.
void check(bool holds, const char *what);

} // namespace TrivexFuzz
