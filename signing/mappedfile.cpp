// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "signing/mappedfile.h"

#include "qca/base/regularfile.h"
#include "signing/filedigest.h"

#include <QFileInfo>

#include <algorithm>
#include <limits>
#include <mutex>
#include <utility>
#include <vector>

#include <sys/stat.h>

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

QString strongDigest()
{
    return QStringLiteral("sha256");
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
    const std::lock_guard lock(registry().mutex);
    registry().files.push_back(file);
    return file;
}

std::shared_ptr<MappedFile> MappedFile::behind(const QByteArray &bytes)
{
    std::shared_ptr<MappedFile> found;
    const std::lock_guard lock(registry().mutex);
    for (const auto &file : registry().files) {
        if (!file->m_isMapped || file->m_bytes.size() != bytes.size())
            continue;
        // Empty arrays have no address of their own.
        if (bytes.isEmpty() ? !found || file->m_isChanged || !file->isAsOpened()
                            : file->m_bytes.constData() == bytes.constData())
            found = file;
    }
    return found;
}

void MappedFile::releaseUnused()
{
    std::vector<std::shared_ptr<MappedFile>> unused;
    const std::lock_guard lock(registry().mutex);
    auto &files = registry().files;
    const auto end = std::stable_partition(files.begin(), files.end(), [](const auto &file) {
        return file.use_count() > 1 || file->isShared();
    });
    std::move(end, files.end(), std::back_inserter(unused));
    files.erase(end, files.end());
}

bool MappedFile::openDescriptor()
{
    struct stat status;
    if (!openRegularFile(m_path, &m_file) || fstat(m_file.handle(), &status) != 0)
        return false;
    m_size = status.st_size;
    m_changeTime = status.st_mtim;
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
    if (m_size <= 0 || m_size > std::numeric_limits<int>::max()) {
        m_isMapped = isEmpty();
        return m_isMapped;
    }
    const uchar *data = m_file.map(0, m_size, QFileDevice::MapPrivateOption);
    if (!data)
        return false;
    m_guard.emplace(data, std::size_t(m_size));
    m_bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(data), int(m_size));
    m_isMapped = true;
    return true;
}

// Times of change are as coarse as the system's tick, and can be set back. So the contents have to
// be the same too, compared by a digest that nobody can forge if there is one.
QByteArray MappedFile::digest(const QString &type)
{
    if (!isDigestKnown(type) || !isUnchanged())
        return {};
    if (m_sealType.isEmpty())
        m_sealType = isDigestKnown(strongDigest()) ? strongDigest() : type;
    QStringList types{m_sealType, type};
    types.removeDuplicates();
    const QList<QByteArray> digests = fileDigests(&m_file, m_size, types);
    if (m_seal.isEmpty() && !digests.isEmpty())
        m_seal = digests.first();
    if (digests.isEmpty() || digests.first() != m_seal)
        setChanged();
    return isUnchanged() ? digests.last() : QByteArray();
}

bool MappedFile::isAsOpened() const
{
    struct stat status;
    return fstat(m_file.handle(), &status) == 0 && status.st_size == m_size
        && status.st_mtim.tv_sec == m_changeTime.tv_sec
        && status.st_mtim.tv_nsec == m_changeTime.tv_nsec && !(m_guard && m_guard->isDamaged());
}

bool MappedFile::isUnchanged()
{
    if (!m_isChanged && !isAsOpened())
        setChanged();
    return !m_isChanged;
}

void MappedFile::setChanged()
{
    if (std::exchange(m_isChanged, true))
        return;
    if (m_changeListener)
        m_changeListener();
}

void MappedFile::setChangeListener(std::function<void()> listener)
{
    m_changeListener = std::move(listener);
}

QString MappedFile::watchablePath() const
{
    const QString held = QStringLiteral("/proc/self/fd/%1").arg(m_file.handle());
    return QFileInfo::exists(held) ? held : m_path;
}

} // namespace Trivex
