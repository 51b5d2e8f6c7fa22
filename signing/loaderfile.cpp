// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "signing/loaderfile.h"

#include "signing/mappedfile.h"

#include <QFileInfo>
#include <QMimeDatabase>
#include <QtCrypto>

#include <utility>

/// What a load finds out, before any of it shows.
struct LoaderFile::Loaded {
    std::shared_ptr<Trivex::MappedFile> file;
    QString mimeType;
    QString hash;
};

LoaderFile::LoaderFile(QObject *parent)
    : QObject(parent)
{
}

LoaderFile::~LoaderFile()
{
    m_rawData.clear();
    release();
}

void LoaderFile::setFilePath(const QString &path)
{
    if (path == m_filePath)
        return;
    setStatus(Loading);
    setError(NoError);
    release();
    Loaded loaded;
    if (const int error = load(path, &loaded)) {
        fail(error);
        return;
    }
    accept(path, std::move(loaded));
    setStatus(Ready);
    notifyLoaded();
}

int LoaderFile::load(const QString &path, Loaded *loaded) const
{
    loaded->file = Trivex::MappedFile::open(path);
    if (!loaded->file)
        return ErrorNotOpenFile;
    loaded->mimeType = QMimeDatabase().mimeTypeForFile(QFileInfo(path)).name();
    if (!availableMimeTypes().contains(loaded->mimeType))
        return ErrorMimeType;
    if (!loaded->file->map())
        return ErrorNotLoadFile;
    const QByteArray digest = loaded->file->digest(m_hashType);
    if (!loaded->file->isWhole())
        return ErrorNotLoadFile;
    loaded->hash = QCA::arrayToHex(digest);
    return NoError;
}

void LoaderFile::accept(const QString &path, Loaded loaded)
{
    const QFileInfo info(path);
    m_file = std::move(loaded.file);
    m_mimeType = loaded.mimeType;
    m_filePath = path;
    m_fileName = info.fileName();
    m_fileSize = m_file->size();
    m_rawData = m_file->bytes();
    m_fileHash = loaded.hash;
    // The bytes before these are given up only now.
    Trivex::MappedFile::releaseUnused();
    watch();
}

void LoaderFile::notifyLoaded()
{
    Q_EMIT filePathChanged();
    Q_EMIT fileNameChanged();
    Q_EMIT mimeTypeChanged();
    Q_EMIT fileSizeChanged();
    Q_EMIT fileHashChanged();
    Q_EMIT rawDataChanged();
}

void LoaderFile::setHashType(const QString &name)
{
    if (name == m_hashType)
        return;
    m_hashType = name;
    m_fileHash = QString();
    if (m_file) {
        const QByteArray digest = m_file->digest(name);
        if (!digest.isEmpty())
            m_fileHash = QCA::arrayToHex(digest);
    }
    Q_EMIT hashTypeChanged();
    checkFile();
}

void LoaderFile::setError(int error)
{
    if (error == m_error)
        return;
    m_error = error;
    Q_EMIT errorChanged();
}

void LoaderFile::setStatus(int status)
{
    if (status == m_status)
        return;
    m_status = status;
    Q_EMIT statusChanged();
}

void LoaderFile::fail(int error)
{
    setError(error);
    setStatus(Error);
}

void LoaderFile::release()
{
    m_watcher.reset();
    m_file.reset();
    Trivex::MappedFile::releaseUnused();
}

void LoaderFile::watch()
{
    m_watcher = std::make_unique<QFileSystemWatcher>();
    m_watcher->addPath(m_filePath);
    connect(m_watcher.get(), &QFileSystemWatcher::fileChanged, this, &LoaderFile::checkFile);
}

void LoaderFile::checkFile()
{
    if (m_status == Ready && m_file && !(m_file->isWhole() && m_file->isNamed()))
        fail(ErrorNotLoadFile);
}

QStringList LoaderFile::availableMimeTypes() const
{
    return {QStringLiteral("application/pdf"), QStringLiteral("image/png"),
            QStringLiteral("image/jpeg"), QStringLiteral("text/plain")};
}

bool LoaderFile::isImage() const
{
    return m_mimeType.contains(QLatin1String("image"));
}

bool LoaderFile::isPdf() const
{
    return m_mimeType.contains(QLatin1String("application/pdf"));
}
