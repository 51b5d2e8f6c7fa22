// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QString>
#include <QStringList>

namespace Trivex {

/// The directory of the catalogue `file`, as an absolute path: the one that the build was
/// configured with, where the file is there; else the one that lies in the same tree, built or
/// installed, as the platform library, wherever that tree lies now; else the configured one all the
/// same. Any thread.
TRIVEX_QCA_EXPORT QString catalogueDirectory(const QString &file);

/// The directories in which the QCA providers of the same tree, built or installed, may lie, as
/// absolute paths, the best first. Any thread.
TRIVEX_QCA_EXPORT QStringList providerDirectories();

} // namespace Trivex
