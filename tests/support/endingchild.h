// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace TrivexTest {

/// The exit status of a child that has ended as it was told.
constexpr int ToldStatus = 7;
/// What a process may take from that to its end; more is a hang.
constexpr int EndPatience = 3000; // ms

/// In the child: says that it is to end from now on. Thread-safe.
void sayEnding();
/// In the child: ends the process in `way`: "quit" ends the event loops, "exit" calls `exit` here
/// with everything alive, "thread" does so on another thread.
void endProcess(const QString &way);

/// Runs this program again with `arguments`, until it has said so and ended. Empty when it
/// ended by itself in time with `ToldStatus`; else what was the matter.
QString childProblem(const QStringList &arguments);

/// Under AddressSanitizer, processes that are started from now on are not looked through for leaks
/// at their end: what a process leaves over that ends in the middle of its work is none, and the
/// look takes as long as the end may.
void lookForNoLeaks();

} // namespace TrivexTest
