// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QString>

namespace Trivex {

/// Makes the directory `path` with those above it that are missing, whatever the umask: each for
/// its owner alone (mode 0700), as the XDG Base Directory Specification asks of a program. What is
/// there stays as it is. False when there is no such directory afterwards. Any thread.
TRIVEX_QCA_EXPORT bool makePrivateDirectory(const QString &path);

/// True for a directory of this user. A link is none, wherever it leads. Any thread.
TRIVEX_QCA_EXPORT bool isOwnDirectory(const QString &path);

/// As `makePrivateDirectory`, and takes from others what they may do in a directory that is there.
/// False for one that is not `isOwnDirectory`, which stays as it is. Any thread.
TRIVEX_QCA_EXPORT bool takePrivateDirectory(const QString &path);

} // namespace Trivex
