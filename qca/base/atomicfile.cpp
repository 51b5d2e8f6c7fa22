// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/base/atomicfile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <iterator>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Trivex {

namespace {

constexpr qint64 StaleAge = 3600; // seconds

QString directoryOf(const QString &path)
{
    return QFileInfo(path).absolutePath();
}

/// True while an `AtomicFile` of any process has this part: each holds a lock on its own. Where the
/// file system knows no locks, only its age speaks for it.
bool isBeingWritten(const QString &part)
{
    // The file is opened for writing, because NFS gives such a lock to nobody else.
    const Descriptor file(
        ::open(QFile::encodeName(part).constData(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file.isOpen() || ::flock(file.get(), LOCK_EX | LOCK_NB) == 0)
        return false;
    return errno != ENOLCK && errno != ENOSYS && errno != EOPNOTSUPP;
}

/// By the clock alone a part would be old, or from times to come, once the clock has been set.
void removeStaleParts(const QString &directory)
{
    const QDateTime now = QDateTime::currentDateTime();
    const auto parts = QDir(directory).entryInfoList({QStringLiteral(".trivex-*.part")},
                                                     QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    for (const QFileInfo &part : parts) {
        if (qAbs(part.lastModified().secsTo(now)) > StaleAge && !isBeingWritten(part.filePath()))
            QFile::remove(part.filePath());
    }
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

/// The last call is none that this file system, or this kernel, knows.
bool isUnknownCall()
{
    constexpr int Unknown[] = {EINVAL, ENOSYS, EPERM, EOPNOTSUPP};
    return std::find(std::begin(Unknown), std::end(Unknown), errno) != std::end(Unknown);
}

WriteResult moveOver(const QByteArray &from, const QByteArray &to)
{
    return ::rename(from.constData(), to.constData()) == 0 ? WriteResult::Written : fromErrno();
}

/// Takes the name with an empty file, which only one can make, and moves over that one.
WriteResult moveOverOwn(const QByteArray &from, const QByteArray &to)
{
    Descriptor own(::open(to.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!own.isOpen())
        return fromErrno();
    own.reset(); // file systems of other systems may keep a file that is open
    const WriteResult result = moveOver(from, to);
    if (result != WriteResult::Written)
        ::unlink(to.constData());
    return result;
}

/// The best of the ways that the file system has. Each fails where another file has the name.
WriteResult moveToNewName(const QByteArray &from, const QByteArray &to)
{
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return WriteResult::Written;
    if (!isUnknownCall())
        return fromErrno();
    // A second name, and then the first one away.
    if (::link(from.constData(), to.constData()) == 0) {
        ::unlink(from.constData());
        return WriteResult::Written;
    }
    return isUnknownCall() ? moveOverOwn(from, to) : fromErrno();
}

} // namespace

AtomicFile::AtomicFile(const QString &path, FileReaders readers)
    : m_path(path)
{
    const QString directory = directoryOf(path);
    removeStaleParts(directory);
    m_partName =
        QFile::encodeName(QStringLiteral("%1/.trivex-%2.part")
                              .arg(directory, QUuid::createUuid().toString(QUuid::WithoutBraces)));
    const mode_t mode = readers == FileReaders::Owner ? 0600 : 0666;
    m_part =
        Descriptor(::open(m_partName.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (m_part.isOpen())
        ::flock(m_part.get(), LOCK_EX | LOCK_NB);
}

AtomicFile::~AtomicFile()
{
    if (m_part.isOpen())
        ::unlink(m_partName.constData());
}

QString AtomicFile::partPath() const
{
    return QFile::decodeName(m_partName);
}

bool AtomicFile::write(const char *data, qint64 size)
{
    while (size > 0) {
        const ssize_t count = ::write(m_part.get(), data, std::size_t(size));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        data += count;
        size -= count;
    }
    return true;
}

WriteResult AtomicFile::place(bool mayReplace)
{
    if (!m_part.isOpen() || ::fsync(m_part.get()) != 0)
        return WriteResult::Failed;
    const QByteArray name = QFile::encodeName(m_path);
    const WriteResult result =
        mayReplace ? moveOver(m_partName, name) : moveToNewName(m_partName, name);
    if (result == WriteResult::Written) {
        m_part.reset();
        flushDirectory(directoryOf(m_path));
    }
    return result;
}

WriteResult writeAtomically(const QString &path, const QByteArray &content, bool mayReplace,
                            FileReaders readers)
{
    AtomicFile file(path, readers);
    if (!file.isOpen() || !file.write(content.constData(), content.size()))
        return WriteResult::Failed;
    return file.place(mayReplace);
}

bool removeFile(const QString &path)
{
    const bool removed = QFile::remove(path) || !QFile::exists(path);
    flushDirectory(directoryOf(path));
    return removed;
}

} // namespace Trivex
