// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/cms/bytesource.h"

#include "qca/base/regularfile.h"

#include <algorithm>
#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

namespace Trivex {

namespace {

bool isSameTime(const timespec &a, const timespec &b)
{
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

class FileBytes : public ByteSource {
public:
    bool open(const QString &path)
    {
        return openRegularFile(path, &m_file) && fstat(m_file.handle(), &m_status) == 0;
    }

    qint64 size() const override { return qint64(m_status.st_size); }

    bool readAt(qint64 offset, char *to, qint64 count) const override
    {
        while (count > 0) {
            const ssize_t got = ::pread(m_file.handle(), to, std::size_t(count), offset);
            if (got < 0 && errno == EINTR)
                continue;
            if (got <= 0)
                return false;
            offset += got;
            to += got;
            count -= got;
        }
        return true;
    }

    // Other rights, another name or a note of an indexer set the time of the last change of status,
    // and leave what was read as it was.
    bool isUnchanged() const override
    {
        struct stat now;
        return fstat(m_file.handle(), &now) == 0 && now.st_size == m_status.st_size
            && isSameTime(now.st_mtim, m_status.st_mtim);
    }

    // A writer can set every time of a file except this one.
    bool isUntouched() const override
    {
        struct stat now;
        return isUnchanged() && fstat(m_file.handle(), &now) == 0
            && isSameTime(now.st_ctim, m_status.st_ctim);
    }

    bool isFile(const QString &path) const override
    {
        struct stat there;
        return ::stat(QFile::encodeName(path).constData(), &there) == 0
            && there.st_dev == m_status.st_dev && there.st_ino == m_status.st_ino;
    }

private:
    QFile m_file;
    struct stat m_status = {};
};

class MemoryBytes : public ByteSource {
public:
    explicit MemoryBytes(const QByteArray &bytes)
        : m_bytes(bytes)
    {
    }

    qint64 size() const override { return m_bytes.size(); }

    bool readAt(qint64 offset, char *to, qint64 count) const override
    {
        if (offset < 0 || count < 0 || offset > size() - count)
            return false;
        std::copy_n(m_bytes.constData() + offset, count, to);
        return true;
    }

private:
    const QByteArray m_bytes;
};

} // namespace

ByteSource::~ByteSource() = default;

bool ByteSource::isFile(const QString &) const
{
    return false;
}

ByteSourcePtr openByteSource(const QString &path)
{
    auto file = std::make_shared<FileBytes>();
    return file->open(path) ? file : nullptr;
}

ByteSourcePtr byteSourceOf(const QByteArray &bytes)
{
    return std::make_shared<MemoryBytes>(bytes);
}

} // namespace Trivex
