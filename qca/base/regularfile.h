// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace Trivex {

/// A descriptor of the regular file at `path`, open for reading; the caller closes it. -1 for
/// anything else. Never waits for the other end of a pipe, and never opens a device.
TRIVEX_QCA_EXPORT int openRegularFile(const QString &path);

enum class FileProblem {
    None,
    Unreadable, ///< missing, not a regular file, or an error while reading
    TooLarge, ///< more than `MaxFileBytes`, which were not read
};

/// The contents of a file of at most `MaxFileBytes`. On failure `*problem`, if given, says why.
TRIVEX_QCA_EXPORT std::optional<QByteArray> readRegularFile(const QString &path,
                                                            FileProblem *problem = nullptr);

/// Writes `contents` to `path` and replaces what the file held. False when not all of it could be
/// written. Does not wait for the reader of a pipe: false when there is none.
TRIVEX_QCA_EXPORT bool writeFile(const QString &path, const QByteArray &contents);

} // namespace Trivex
