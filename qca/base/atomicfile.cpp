// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/atomicfile.h"

#include "qca/base/descriptor.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Trivex {

namespace {

constexpr qint64 StaleAge = 3600; // seconds

QString directoryOf(const QString &path)
{
    return QFileInfo(path).absolutePath();
}

void removeStaleParts(const QString &directory)
{
    const QDateTime limit = QDateTime::currentDateTime().addSecs(-StaleAge);
    const auto parts = QDir(directory).entryInfoList({QStringLiteral(".trivex-*.part")},
                                                     QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    for (const QFileInfo &part : parts) {
        if (part.lastModified() < limit)
            QFile::remove(part.filePath());
    }
}

bool writeWhole(int descriptor, const QByteArray &content)
{
    for (qint64 done = 0; done < content.size();) {
        const ssize_t count =
            ::write(descriptor, content.constData() + done, std::size_t(content.size() - done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        done += count;
    }
    return ::fsync(descriptor) == 0;
}

bool writePart(const QByteArray &name, const QByteArray &content)
{
    const Descriptor part(::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    return part.isOpen() && writeWhole(part.get(), content);
}

/// Flushes the entries of a directory. File systems that can't are left to their own ways.
void flushDirectory(const QString &path)
{
    const Descriptor directory(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.isOpen())
        ::fsync(directory.get());
}

WriteResult fromErrno()
{
    return errno == EEXIST ? WriteResult::Exists : WriteResult::Failed;
}

WriteResult moveToNewName(const QByteArray &from, const QByteArray &to)
{
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return WriteResult::Written;
    if (errno != EINVAL && errno != ENOSYS)
        return fromErrno();
    // A file system without that call: a second name, and then the first one away.
    if (::link(from.constData(), to.constData()) != 0)
        return fromErrno();
    ::unlink(from.constData());
    return WriteResult::Written;
}

WriteResult moveOver(const QByteArray &from, const QByteArray &to)
{
    return ::rename(from.constData(), to.constData()) == 0 ? WriteResult::Written : fromErrno();
}

} // namespace

WriteResult writeAtomically(const QString &path, const QByteArray &content, bool mayReplace)
{
    const QString directory = directoryOf(path);
    removeStaleParts(directory);
    const QByteArray name = QFile::encodeName(path);
    const QByteArray part =
        QFile::encodeName(QStringLiteral("%1/.trivex-%2.part")
                              .arg(directory, QUuid::createUuid().toString(QUuid::WithoutBraces)));
    WriteResult result = WriteResult::Failed;
    if (writePart(part, content))
        result = mayReplace ? moveOver(part, name) : moveToNewName(part, name);
    if (result == WriteResult::Written)
        flushDirectory(directory);
    else
        ::unlink(part.constData());
    return result;
}

bool removeFile(const QString &path)
{
    const bool removed = QFile::remove(path) || !QFile::exists(path);
    flushDirectory(directoryOf(path));
    return removed;
}

} // namespace Trivex
