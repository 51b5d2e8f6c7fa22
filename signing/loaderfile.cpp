// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "signing/loaderfile.h"

#include "signing/mappedfile.h"

#include <QFileInfo>
#include <QMimeDatabase>
#include <QPointer>
#include <QtCrypto>

#include <utility>

/// The results of a load, before they are published.
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
    release();
}

void LoaderFile::setFilePath(const QString &path)
{
    if (path == m_filePath && m_status != Error)
        return;
    ++m_loads;
    release();
    if (!setState(Loading, NoError))
        return;
    Loaded loaded;
    if (const int error = load(path, &loaded)) {
        loaded = {};
        Trivex::MappedFile::releaseUnused();
        setState(Error, error);
        return;
    }
    accept(path, std::move(loaded));
    if (setState(Ready, NoError))
        notifyLoaded();
}

int LoaderFile::load(const QString &path, Loaded *loaded) const
{
    loaded->file = Trivex::MappedFile::open(path);
    if (!loaded->file)
        return ErrorNotOpenFile;
    // By the name and contents of the held file.
    loaded->mimeType =
        QMimeDatabase().mimeTypeForFileNameAndData(path, loaded->file->device()).name();
    if (!availableMimeTypes().contains(loaded->mimeType))
        return ErrorMimeType;
    if (!loaded->file->map())
        return ErrorNotLoadFile;
    const QByteArray digest = loaded->file->digest(m_hashType);
    if (!loaded->file->isUnchanged())
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
    // The signer checks the file too, so listeners are called after it.
    m_file->setChangeListener(
        [this] { QMetaObject::invokeMethod(this, &LoaderFile::checkFile, Qt::QueuedConnection); });
    watch();
}

void LoaderFile::notifyLoaded()
{
    using Signal = void (LoaderFile::*)();
    constexpr Signal InOrder[] = {
        &LoaderFile::filePathChanged, &LoaderFile::fileNameChanged, &LoaderFile::mimeTypeChanged,
        &LoaderFile::fileSizeChanged, &LoaderFile::fileHashChanged, &LoaderFile::rawDataChanged,
    };
    const QPointer<LoaderFile> self(this);
    const int load = m_loads;
    for (const Signal changed : InOrder) {
        if (self && m_loads == load)
            Q_EMIT(this->*changed)();
    }
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

/// Sets both before anybody is told of either. False when a listener has started another load
/// meanwhile, or has deleted this object.
bool LoaderFile::setState(int status, int error)
{
    const QPointer<LoaderFile> self(this);
    const int load = m_loads;
    const bool isOtherStatus = std::exchange(m_status, status) != status;
    const bool isOtherError = std::exchange(m_error, error) != error;
    // A failure announces its reason first.
    const bool errorFirst = status == Error;
    if (isOtherError && errorFirst)
        Q_EMIT errorChanged();
    if (self && m_loads == load && isOtherStatus)
        Q_EMIT statusChanged();
    if (self && m_loads == load && isOtherError && !errorFirst)
        Q_EMIT errorChanged();
    return self && m_loads == load;
}

/// Gives up the file and its mapping, unless others still hold copies of its bytes.
void LoaderFile::release()
{
    m_watcher.reset();
    m_rawData.clear();
    if (m_file)
        m_file->setChangeListener({});
    m_file.reset();
    Trivex::MappedFile::releaseUnused();
}

void LoaderFile::watch()
{
    if (!m_watcher) {
        m_watcher = std::make_unique<QFileSystemWatcher>();
        connect(m_watcher.get(), &QFileSystemWatcher::fileChanged, this, &LoaderFile::checkFile);
    }
    // The watcher drops a file that is renamed.
    if (m_watcher->files().isEmpty())
        m_watcher->addPath(m_file->watchablePath());
}

void LoaderFile::checkFile()
{
    if (m_status != Ready || !m_file)
        return;
    if (m_file->isUnchanged())
        watch();
    else
        setState(Error, ErrorNotLoadFile);
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
