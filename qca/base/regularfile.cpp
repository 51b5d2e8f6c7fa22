// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/regularfile.h"

#include "qca/base/bounds.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Trivex {

namespace {

bool isRegular(const struct stat &status)
{
    return S_ISREG(status.st_mode);
}

FileProblem read(const QString &path, QByteArray *contents)
{
    const int descriptor = openRegularFile(path);
    if (descriptor < 0)
        return FileProblem::Unreadable;
    QFile file;
    if (!file.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered,
                   QFileDevice::AutoCloseHandle)) {
        close(descriptor);
        return FileProblem::Unreadable;
    }
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
int openRegularFile(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat status;
    if (stat(name.constData(), &status) != 0 || !isRegular(status))
        return -1;
    const int descriptor = ::open(name.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (descriptor >= 0 && (fstat(descriptor, &status) != 0 || !isRegular(status))) {
        close(descriptor);
        return -1;
    }
    return descriptor;
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
    const int descriptor =
        ::open(QFile::encodeName(path).constData(),
               O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_CLOEXEC | O_NOCTTY, 0666);
    QFile file;
    if (descriptor < 0)
        return false;
    if (!file.open(descriptor, QIODevice::WriteOnly | QIODevice::Unbuffered,
                   QFileDevice::AutoCloseHandle)) {
        close(descriptor);
        return false;
    }
    const bool isWritten = file.write(contents) == contents.size();
    file.close();
    return isWritten && file.error() == QFileDevice::NoError;
}

} // namespace Trivex
