// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/regularfile.h"

#include "qca/base/bounds.h"
#include "qca/base/descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

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
    // Without blocking: a pipe would wait for its other end.
    Descriptor descriptor(::open(QFile::encodeName(path).constData(),
                                 O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_CLOEXEC | O_NOCTTY,
                                 0666));
    QFile file;
    if (!openUnbuffered(std::move(descriptor), QIODevice::WriteOnly, &file))
        return false;
    const bool isWritten = file.write(contents) == contents.size();
    file.close();
    return isWritten && file.error() == QFileDevice::NoError;
}

} // namespace Trivex
