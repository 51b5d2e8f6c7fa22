// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/files.h"

#include "qca/base/filenames.h"
#include "qca/base/regularfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QSettings>
#include <QStorageInfo>

#include <limits>

#include <sys/stat.h>

namespace Trivex {

namespace {

/// Whether the file has contents but tells no size, as those of /proc.
bool hasUnmeasuredContents(const QFileInfo &info)
{
    constexpr qint64 Entries = 4096; // some of them give whole entries only
    QFile file;
    return info.size() == 0 && openRegularFile(info.filePath(), &file)
        && !file.read(Entries).isEmpty();
}

/// The folder itself, or the one in which it would have to be made.
QFileInfo nearestFolder(const QString &folder)
{
    QFileInfo info(folder);
    while (!info.exists() && !info.isRoot() && info.absolutePath() != info.filePath())
        info.setFile(info.absolutePath());
    return info;
}

/// As much as decides about the type of a file.
constexpr qint64 BeginningSize = 16 * 1024;

QByteArray readBeginning(const QString &path)
{
    QFile file;
    return openRegularFile(path, &file) ? file.read(BeginningSize) : QByteArray();
}

} // namespace

Files::Files(QObject *parent)
    : QObject(parent)
{
}

QString Files::homeFolder() const
{
    return QDir::homePath();
}

QString Files::path(const QUrl &url) const
{
    if (url.isLocalFile())
        return url.toLocalFile();
    return url.scheme().isEmpty() ? url.path() : QString();
}

QUrl Files::url(const QString &path) const
{
    return path.isEmpty() ? QUrl() : QUrl::fromLocalFile(path);
}

QString Files::fileName(const QString &path) const
{
    return QFileInfo(path).fileName();
}

QString Files::folder(const QString &path) const
{
    return QFileInfo(path).absolutePath();
}

QString Files::exportPath(const QString &folder, const QString &name) const
{
    return folder + QLatin1Char('/') + safeFileName(name);
}

bool Files::exists(const QString &path) const
{
    return QFileInfo::exists(path);
}

bool Files::isFolder(const QString &path) const
{
    return QFileInfo(path).isDir();
}

bool Files::isReadable(const QString &path) const
{
    QFile file;
    return openRegularFile(path, &file) && !hasUnmeasuredContents(QFileInfo(path));
}

double Files::size(const QString &path) const
{
    return double(QFileInfo(path).size());
}

QString Files::mimeType(const QString &path) const
{
    const QByteArray beginning = readBeginning(path);
    return QMimeDatabase().mimeTypeForFileNameAndData(path, beginning).name();
}

QString Files::stamp(const QString &path) const
{
    struct stat status;
    if (path.isEmpty() || ::stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    QStringList parts;
    for (const qint64 number :
         {qint64(status.st_dev), qint64(status.st_ino), qint64(status.st_size),
          qint64(status.st_mtim.tv_sec), qint64(status.st_mtim.tv_nsec),
          qint64(status.st_ctim.tv_sec), qint64(status.st_ctim.tv_nsec)})
        parts += QString::number(number);
    return parts.join(QLatin1Char(':'));
}

QString Files::whyNotWritten(const QString &folder) const
{
    // One that could not be made is not to blame, but the one that it would lie in.
    const QFileInfo info = nearestFolder(folder);
    const bool isMissing = info.filePath() != QFileInfo(folder).filePath();
    if (!info.isDir() || (isMissing && info.isWritable())) {
        //% "The folder does not exist any more. Choose another one."
        return qtTrId("trivex-app-write-no-folder");
    }
    const QStorageInfo storage(info.filePath());
    if (storage.isValid() && storage.isReadOnly()) {
        //% "This disk is write-protected. Choose another folder."
        return qtTrId("trivex-app-write-read-only");
    }
    if (!info.isWritable()) {
        //% "You may not write to this folder. Choose another one."
        return qtTrId("trivex-app-write-denied");
    }
    constexpr qint64 LeastSpace = 64 * 1024;
    if (storage.isValid() && storage.bytesAvailable() < LeastSpace) {
        //% "The disk is full. Free some space or choose another folder."
        return qtTrId("trivex-app-write-full");
    }
    //% "The file could not be written whole. Choose another folder or check the disk."
    return qtTrId("trivex-app-write-failed");
}

bool Files::settingsAreKept() const
{
    const QFileInfo file(QSettings().fileName());
    // A new file takes the place of the old one.
    const QFileInfo folder = nearestFolder(file.path());
    return folder.isDir() && folder.isWritable() && (!file.exists() || file.isWritable());
}

QString Files::whyNotRead(const QString &path) const
{
    const QFileInfo info(path);
    if (!info.exists() && path.contains(QChar::ReplacementCharacter)) {
        //% "The name of this file has letters in an old encoding, so it can't be opened. Rename it
        //% and choose it again."
        return qtTrId("trivex-app-read-name");
    }
    if (!info.exists()) {
        //% "The file is not there any more. Choose it again."
        return qtTrId("trivex-app-read-missing");
    }
    if (info.isDir()) {
        //% "This is a folder. Choose a file in it."
        return qtTrId("trivex-app-read-folder");
    }
    if (!info.isReadable()) {
        //% "You may not read this file. Ask its owner for access."
        return qtTrId("trivex-app-read-denied");
    }
    if (!info.isFile() || hasUnmeasuredContents(info)) {
        //% "This is a pipe, a device or a file of the running system. Choose an ordinary file."
        return qtTrId("trivex-app-read-special");
    }
    if (info.size() == 0) {
        //% "The file is empty. Ask for it to be sent again."
        return qtTrId("trivex-app-read-empty");
    }
    if (info.size() > std::numeric_limits<int>::max()) {
        //% "The file is too big: 2 GB and more can't be read here. Compress it or split it."
        return qtTrId("trivex-app-read-too-big");
    }
    //% "The file could not be read. Check the disk that it is on, or choose another file."
    return qtTrId("trivex-app-read-failed");
}

} // namespace Trivex
