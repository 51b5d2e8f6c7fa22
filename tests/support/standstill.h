// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QProcess;

namespace TrivexTest {

/// What holds up the process `id`, a line a thread: its name, state, the processor time that it has
/// used (in ticks of the clock), and where the kernel says so, the function and the system call in
/// which it waits. Says so where there is no such process.
QString whereItStands(qint64 id);

/// Reads what `child` writes to its standard output until `word` stands there. Where nothing comes
/// for `look` milliseconds it warns where the child stands, so that the log of a failure explains
/// itself, and goes on, five times in all. Empty when the word came; else what the child did
/// instead: its last output, errors, and how it ended or where it still stands.
QString problemBefore(const QByteArray &word, QProcess &child, int look = 60000);

} // namespace TrivexTest
