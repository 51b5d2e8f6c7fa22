// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>
#include <QString>

namespace Trivex {

enum class WriteResult {
    Written,
    Exists, ///< a file of that name is there and was not to be replaced
    Failed,
};

/// Writes `content` to the file `path`, whole or not at all: to a hidden file ".trivex-*.part" in
/// the same directory, flushed to the disk and then renamed. Killed at any point, it leaves the
/// file that was there as it was; a part file that was left is removed by a later write.
TRIVEX_QCA_EXPORT WriteResult writeAtomically(const QString &path, const QByteArray &content,
                                              bool mayReplace);

/// Removes the file `path` and flushes its directory. True when it is gone.
TRIVEX_QCA_EXPORT bool removeFile(const QString &path);

} // namespace Trivex
