// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

namespace TrivexTest {

/// How a process ends, for `runEnding`.
struct Ending {
    QString way; ///< see `endingWays`
    QString call; ///< the call of the module that takes a minute; empty: none
    QString storeName;
    QString controlFile;
};

/// "return": everything is destroyed, `main` returns. "exit": `exit` is called on the main thread
/// with everything alive. "thread": the same on another thread.
extern const char *const endingWays[3];

constexpr int EndingStatus = 7;

/// The main part of a process that works on a token and ends so. Its exit status.
int runEnding(const Ending &ending);

/// QCA ends while the module is in a call, and the process goes on until that has returned.
int runLateReturn(const Ending &ending, int milliseconds);

/// Generates a key and calls `exit` after `milliseconds`.
int runGeneratingEnd(const QString &storeName, int milliseconds);

/// Works on a token and forks; the exit status tells how the child ended.
int runForkingParent(const QString &storeName);

/// A PIN is asked for and used under two application objects, one after the other.
int runTwoApplications(int argc, char *argv[], const QString &storeName);

} // namespace TrivexTest
