// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <optional>

namespace Trivex {

/// Opens the regular file at `path` for reading, unbuffered; `file` owns the descriptor. False for
/// anything else. Never waits for the other end of a pipe, and never opens a device.
TRIVEX_QCA_EXPORT bool openRegularFile(const QString &path, QFile *file);

enum class FileProblem {
    None,
    Unreadable, ///< missing, not a regular file, or an error while reading
    TooLarge, ///< more than `MaxFileBytes`, which were not read
};

/// The contents of a file of at most `MaxFileBytes`. On failure `*problem`, if given, says why.
TRIVEX_QCA_EXPORT std::optional<QByteArray> readRegularFile(const QString &path,
                                                            FileProblem *problem = nullptr);

/// Writes `contents` to `path` and replaces what the file held; its permissions and its other names
/// stay. False when not all of it could be written: where there is no room for it, what the file
/// held stays too, and a new file is taken away again. Does not wait for the reader of a pipe:
/// false when there is none.
TRIVEX_QCA_EXPORT bool writeFile(const QString &path, const QByteArray &contents);

} // namespace Trivex
