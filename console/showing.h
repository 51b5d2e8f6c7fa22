// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "console/exitcode.h"

#include <QStringList>

namespace Trivex {

/// Says everything in each of the files. A bundle's password comes from the first line of
/// `passwordFile`, or is asked for at the terminal where that is empty. A file that can't be read
/// is complained about, and the others are shown.
ExitCode show(const QStringList &files, const QString &passwordFile, bool isJson);

} // namespace Trivex
