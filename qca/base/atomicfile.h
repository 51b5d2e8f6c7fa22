// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>
#include <QString>

namespace Trivex {

enum class WriteResult {
    Written,
    Exists, ///< the file exists and must not be replaced
    Failed,
};

/// Writes `content` to the file `path`, whole or not at all: it writes a hidden file
/// ".trivex-*.part" in the same directory, flushes it to the disk and renames it. If the process is
/// killed, the old file stays as it was, and a later write removes the part file.
TRIVEX_QCA_EXPORT WriteResult writeAtomically(const QString &path, const QByteArray &content,
                                              bool mayReplace);

/// Removes the file `path` and flushes its directory. True when it is gone.
TRIVEX_QCA_EXPORT bool removeFile(const QString &path);

} // namespace Trivex
