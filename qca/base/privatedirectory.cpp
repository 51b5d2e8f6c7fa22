// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/privatedirectory.h"

#include "qca/base/descriptor.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Trivex {

namespace {

/// Open only where it is this user's directory, and no link.
Descriptor openOwnDirectory(const QString &path)
{
    // With a slash behind it a link would be followed.
    const QByteArray name = QFile::encodeName(QDir::cleanPath(path));
    Descriptor directory(::open(name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat status;
    if (directory.isOpen()
        && (::fstat(directory.get(), &status) != 0 || status.st_uid != ::geteuid()))
        directory.reset();
    return directory;
}

} // namespace

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

bool isOwnDirectory(const QString &path)
{
    return openOwnDirectory(path).isOpen();
}

bool takePrivateDirectory(const QString &path)
{
    if (!makePrivateDirectory(path))
        return false;
    const Descriptor directory = openOwnDirectory(path);
    return directory.isOpen() && ::fchmod(directory.get(), 0700) == 0;
}

} // namespace Trivex
