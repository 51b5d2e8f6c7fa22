// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonValue>
#include <QString>

namespace Trivex {

// What the program says without a window: results on standard output, all else on standard error.
// Always UTF-8, as everything that a certificate holds.

/// A line of the result.
void say(const QString &line);
/// The whole result, for programs.
void sayJson(const QJsonValue &value);
/// "trivex: <text>" for the person.
void complain(const QString &text);

/// 0 while all that was said has been written; else the number of the first error, and the result
/// is not whole.
int lostAnswer();

} // namespace Trivex
