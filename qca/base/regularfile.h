// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace Trivex {

/// A descriptor of the regular file at `path`, open for reading, which the caller closes; -1 for
/// whatever else is there. Never waits for the other end of a pipe, nor touches a device.
TRIVEX_QCA_EXPORT int openRegularFile(const QString &path);

enum class FileProblem {
    None,
    Unreadable, ///< missing, not a regular file, or an error while reading
    TooLarge, ///< more than `maxFileBytes`, which were not read
};

/// The contents of a file of at most `maxFileBytes`; `*problem`, where given, tells why not.
TRIVEX_QCA_EXPORT std::optional<QByteArray> readRegularFile(const QString &path,
                                                            FileProblem *problem = nullptr);

/// Writes `contents` to `path`, over a file that is there. False when not all of it has arrived,
/// and for a pipe that nobody reads, which is not waited for.
TRIVEX_QCA_EXPORT bool writeFile(const QString &path, const QByteArray &contents);

} // namespace Trivex
