// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "signing/mappedfile.h"

#include "signing/filedigest.h"

#include <algorithm>
#include <limits>
#include <mutex>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Trivex {

namespace {

struct Registry {
    std::mutex mutex;
    std::vector<std::shared_ptr<MappedFile>> files;
};

Registry &registry()
{
    static Registry instance;
    return instance;
}

bool isRegular(const struct stat &status)
{
    return S_ISREG(status.st_mode);
}

/// A descriptor of the regular file at `name`, or -1. It is looked at before it is opened, because
/// opening a device can do something, and again afterwards, because it may be another by then;
/// without blocking, because a pipe waits for its other end.
int openRegular(const QByteArray &name)
{
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

} // namespace

MappedFile::MappedFile(const QString &path)
    : m_path(path)
{
}

MappedFile::~MappedFile() = default;

std::shared_ptr<MappedFile> MappedFile::open(const QString &path)
{
    releaseUnused();
    std::shared_ptr<MappedFile> file(new MappedFile(path));
    if (!file->openDescriptor())
        return nullptr;
    const std::lock_guard locker(registry().mutex);
    registry().files.push_back(file);
    return file;
}

std::shared_ptr<MappedFile> MappedFile::behind(const QByteArray &bytes)
{
    const std::lock_guard locker(registry().mutex);
    for (const auto &file : registry().files) {
        if (!bytes.isEmpty() && file->m_bytes.constData() == bytes.constData()
            && file->m_bytes.size() == bytes.size())
            return file;
    }
    return nullptr;
}

void MappedFile::releaseUnused()
{
    std::vector<std::shared_ptr<MappedFile>> unused;
    const std::lock_guard locker(registry().mutex);
    auto &files = registry().files;
    const auto end = std::stable_partition(files.begin(), files.end(), [](const auto &file) {
        return file.use_count() > 1 || file->isShared();
    });
    std::move(end, files.end(), std::back_inserter(unused));
    files.erase(end, files.end());
}

bool MappedFile::openDescriptor()
{
    const int descriptor = openRegular(QFile::encodeName(m_path));
    if (descriptor < 0)
        return false;
    if (!m_file.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered,
                     QFileDevice::AutoCloseHandle)) {
        close(descriptor);
        return false;
    }
    m_size = m_file.size();
    return true;
}

bool MappedFile::isShared() const
{
    // An array without bytes views nothing, and shares a null that never counts as its own.
    return !m_bytes.isEmpty() && !m_bytes.isDetached();
}

/// False for files that have contents without a size, as those of /proc.
bool MappedFile::isEmpty()
{
    char byte = 0;
    return m_size == 0 && m_file.seek(0) && m_file.read(&byte, 1) == 0;
}

bool MappedFile::map()
{
    if (m_size <= 0 || m_size > std::numeric_limits<int>::max())
        return isEmpty();
    const uchar *data = m_file.map(0, m_size, QFileDevice::MapPrivateOption);
    if (!data)
        return false;
    m_guard.emplace(data, std::size_t(m_size));
    m_bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(data), int(m_size));
    return true;
}

QByteArray MappedFile::digest(const QString &type)
{
    return fileDigest(&m_file, m_size, type);
}

bool MappedFile::isWhole() const
{
    struct stat status;
    return fstat(m_file.handle(), &status) == 0 && status.st_size >= m_size
        && !(m_guard && m_guard->isDamaged());
}

bool MappedFile::isNamed() const
{
    struct stat status;
    return fstat(m_file.handle(), &status) == 0 && status.st_nlink > 0;
}

} // namespace Trivex
