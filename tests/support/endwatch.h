// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace TrivexTest {

/// How a process has ended, seen from outside.
struct Ended {
    /// From its word (see `sayEnding`) to its end, and to the end of everybody who had its output,
    /// without the time in which its threads could have worked and other programs had the
    /// processor.
    qint64 milliseconds = 0;
    int status = -1; ///< as `waitpid` gives it
    bool hasSaidSo = false;
    bool isClosed = false; ///< nobody writes to its output any more
    QByteArray output;

    /// Empty when it has exited with `exitStatus`, in time, and left nobody behind that holds its
    /// output.
    QString problem(int exitStatus) const;
};

/// Runs `program` to its end, and on until its output, standard error included, is closed; what
/// takes longer than the patience is killed.
Ended watchEnd(const QString &program, const QStringList &arguments);

} // namespace TrivexTest
