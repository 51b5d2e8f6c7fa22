// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/privatedirectory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace Trivex {

bool makePrivateDirectory(const QString &path)
{
    const QString whole = QDir::cleanPath(QDir(path).absolutePath());
    int end = 0;
    while (end >= 0) {
        end = whole.indexOf(QLatin1Char('/'), end + 1);
        // What is there, also since a moment ago, is left as it is.
        ::mkdir(QFile::encodeName(whole.left(end)).constData(), 0700);
    }
    return QFileInfo(whole).isDir();
}

} // namespace Trivex
