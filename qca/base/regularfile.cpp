// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/regularfile.h"

#include "qca/base/bounds.h"
#include "qca/base/descriptor.h"

#include <QFileInfo>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Trivex {

namespace {

bool isRegular(const struct stat &status)
{
    return S_ISREG(status.st_mode);
}

bool openUnbuffered(Descriptor descriptor, QIODevice::OpenMode mode, QFile *file)
{
    if (!descriptor.isOpen()
        || !file->open(descriptor.get(), mode | QIODevice::Unbuffered,
                       QFileDevice::AutoCloseHandle))
        return false;
    descriptor.release();
    return true;
}

/// Takes the room for all of the new contents beforehand: a full disk is met while what the file
/// holds is still whole. True also where the file system can't tell.
bool reserve(int descriptor, qint64 oldSize, qint64 newSize)
{
    if (newSize <= oldSize)
        return true;
    const int error = ::posix_fallocate(descriptor, 0, newSize);
    if (error == 0 || error == EINVAL || error == ENOSYS || error == EOPNOTSUPP)
        return true;
    // Part of the room may have been taken. Where it can't be given back, nothing else helps.
    const int cut = ::ftruncate(descriptor, oldSize);
    Q_UNUSED(cut)
    return false;
}

FileProblem read(const QString &path, QByteArray *contents)
{
    QFile file;
    if (!openRegularFile(path, &file))
        return FileProblem::Unreadable;
    if (file.size() > MaxFileBytes)
        return FileProblem::TooLarge;
    // It may grow meanwhile, and some files have contents without a size.
    *contents = file.read(MaxFileBytes + 1);
    if (file.error() != QFileDevice::NoError)
        return FileProblem::Unreadable;
    return contents->size() > MaxFileBytes ? FileProblem::TooLarge : FileProblem::None;
}

} // namespace

// The file is checked before opening, because opening a device can have effects, and again
// afterwards, because the name may lead to another file by then. It is opened without blocking,
// because a pipe would wait for its other end.
bool openRegularFile(const QString &path, QFile *file)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat status;
    if (stat(name.constData(), &status) != 0 || !isRegular(status))
        return false;
    Descriptor descriptor(::open(name.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (!descriptor.isOpen() || fstat(descriptor.get(), &status) != 0 || !isRegular(status))
        return false;
    return openUnbuffered(std::move(descriptor), QIODevice::ReadOnly, file);
}

std::optional<QByteArray> readRegularFile(const QString &path, FileProblem *problem)
{
    QByteArray contents;
    const FileProblem found = read(path, &contents);
    if (problem)
        *problem = found;
    return found == FileProblem::None ? std::make_optional(contents) : std::nullopt;
}

bool writeFile(const QString &path, const QByteArray &contents)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat before;
    const bool isNew = ::stat(name.constData(), &before) != 0;
    // Without blocking: a pipe would wait for its other end. What it holds stays until there is
    // room for the new contents.
    Descriptor descriptor(
        ::open(name.constData(), O_WRONLY | O_CREAT | O_NONBLOCK | O_CLOEXEC | O_NOCTTY, 0666));
    struct stat status;
    if (!descriptor.isOpen() || fstat(descriptor.get(), &status) != 0)
        return false;
    const int number = descriptor.get();
    const bool isFile = isRegular(status);
    QFile file;
    bool isWritten = (!isFile || reserve(number, status.st_size, contents.size()))
        && openUnbuffered(std::move(descriptor), QIODevice::WriteOnly, &file)
        && file.write(contents) == contents.size()
        && (!isFile || ::ftruncate(number, contents.size()) == 0);
    file.close();
    isWritten = isWritten && file.error() == QFileDevice::NoError;
    // A link to it stays.
    if (!isWritten && isNew && isFile)
        QFile::remove(QFileInfo(path).canonicalFilePath());
    return isWritten;
}

} // namespace Trivex
