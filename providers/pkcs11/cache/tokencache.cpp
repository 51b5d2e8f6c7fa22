// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/cache/tokencache.h"

#include "qca/base/atomicfile.h"
#include "qca/base/privatedirectory.h"
#include "qca/base/regularfile.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>

#include <utility>

namespace Trivex {

namespace {

/// Newest first.
QFileInfoList filesIn(const QString &directory)
{
    return QDir(directory).entryInfoList({QStringLiteral("*.rows")},
                                         QDir::Files | QDir::System | QDir::Hidden, QDir::Time);
}

/// Empty for what is no file of its own kind: a link leads elsewhere, and a pipe has no end.
QByteArray contentOf(const QString &path)
{
    const QFileInfo info(path);
    const bool isGood = !info.isSymLink() && info.size() <= MostRowBytes;
    return isGood ? readRegularFile(path).value_or(QByteArray()) : QByteArray();
}

/// Counts as seen now.
void touch(const QString &path)
{
    QFile file(path);
    if (file.open(QIODevice::ReadWrite))
        file.setFileTime(QDateTime::currentDateTimeUtc(), QFileDevice::FileModificationTime);
}

} // namespace

TokenCache::TokenCache(QString directory)
    : m_directory(std::move(directory))
{
}

QString TokenCache::pathOf(const QString &storeId) const
{
    // A label may hold anything, and the names of files tell nobody whose token was here.
    const QByteArray name =
        QCryptographicHash::hash(storeId.toUtf8(), QCryptographicHash::Sha256).toHex();
    return m_directory + QLatin1Char('/') + QString::fromLatin1(name) + QStringLiteral(".rows");
}

std::optional<TokenObjects> TokenCache::read(const RowKey &key) const
{
    const std::lock_guard lock(m_mutex);
    const bool isWanted = isOn() && !m_shunned.contains(key.storeId) && isOwnDirectory(m_directory);
    return isWanted ? unpackRows(key, contentOf(pathOf(key.storeId))) : std::nullopt;
}

void TokenCache::write(const RowKey &key, const TokenObjects &objects)
{
    const std::lock_guard lock(m_mutex);
    const bool isWanted = isStillOn() && !m_shunned.contains(key.storeId);
    if (!isWanted || !takePrivateDirectory(m_directory))
        return;
    const QString path = pathOf(key.storeId);
    const QByteArray rows = packRows(key, objects);
    if (rows.size() > MostRowBytes) {
        QFile::remove(path);
    } else if (rows == contentOf(path)) {
        touch(path);
    } else {
        // Replaces whatever stands under that name, a link too.
        writeAtomically(path, rows, true, FileReaders::Owner);
    }
    // Whoever has switched it off meanwhile may have removed the files before this one came.
    if (!isStillOn())
        QFile::remove(path);
    removeOldFiles();
}

void TokenCache::removeOld() noexcept
{
    const std::lock_guard lock(m_mutex);
    try {
        removeOldFiles();
    } catch (const std::exception &) {
        // Out of memory: the next start does it.
    }
}

void TokenCache::removeOldFiles() const
{
    if (!isOwnDirectory(m_directory))
        return;
    const QDateTime oldest = QDateTime::currentDateTimeUtc().addDays(-MostDays);
    int kept = 0;
    qint64 bytes = 0;
    const QFileInfoList files = filesIn(m_directory);
    for (const QFileInfo &file : files) {
        bytes += file.size();
        if (++kept > MostTokens || bytes > MostBytes || file.lastModified() < oldest)
            QFile::remove(file.filePath());
    }
}

void TokenCache::forget(const QString &storeId)
{
    const std::lock_guard lock(m_mutex);
    if (isOwnDirectory(m_directory))
        QFile::remove(pathOf(storeId));
}

void TokenCache::shun(const QString &storeId)
{
    {
        const std::lock_guard lock(m_mutex);
        m_shunned.insert(storeId);
    }
    forget(storeId);
}

void TokenCache::clear()
{
    const std::lock_guard lock(m_mutex);
    removeRememberedTokens(m_directory);
}

} // namespace Trivex
