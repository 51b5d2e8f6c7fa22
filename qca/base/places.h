// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QString>
#include <QStringList>

namespace Trivex {

/// The directory of the catalogue `file`, as an absolute path: the directory that the build was
/// configured with, if the file exists there; else the directory in the tree, built or installed,
/// that the platform library was loaded from, if the file exists there; else the configured one.
/// Any thread.
TRIVEX_QCA_EXPORT QString catalogueDirectory(const QString &file);

/// The directories that may hold the QCA providers of the platform library's own tree, built or
/// installed, as absolute paths, the best first. Any thread.
TRIVEX_QCA_EXPORT QStringList providerDirectories();

} // namespace Trivex
