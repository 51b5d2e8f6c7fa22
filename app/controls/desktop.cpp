// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "app/controls/desktop.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QLocale>
#include <QRegularExpression>
#include <QStorageInfo>

#include <limits>

#include <sys/stat.h>

namespace Trivex {

Desktop::Desktop(QObject *parent)
    : QObject(parent)
{
}

QString Desktop::fixedFamily() const
{
    return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
}

bool Desktop::hasWidgets() const
{
    // By name: a host without widgets need not load their library.
    return QCoreApplication::instance()->inherits("QApplication");
}

QString Desktop::homeFolder() const
{
    return QDir::homePath();
}

void Desktop::copy(const QString &text) const
{
    QGuiApplication::clipboard()->setText(text);
}

bool Desktop::openFolder(const QString &path) const
{
    const QFileInfo info(path);
    return QDesktopServices::openUrl(
        QUrl::fromLocalFile(info.isDir() ? info.absoluteFilePath() : info.absolutePath()));
}

QString Desktop::path(const QUrl &url) const
{
    if (url.isLocalFile())
        return url.toLocalFile();
    return url.scheme().isEmpty() ? url.path() : QString();
}

QUrl Desktop::url(const QString &path) const
{
    return path.isEmpty() ? QUrl() : QUrl::fromLocalFile(path);
}

QString Desktop::fileName(const QString &path) const
{
    return QFileInfo(path).fileName();
}

QString Desktop::folder(const QString &path) const
{
    return QFileInfo(path).absolutePath();
}

bool Desktop::exists(const QString &path) const
{
    return QFileInfo::exists(path);
}

bool Desktop::isFolder(const QString &path) const
{
    return QFileInfo(path).isDir();
}

QString Desktop::stamp(const QString &path) const
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

QString Desktop::size(qint64 bytes) const
{
    // The locale's own word for bytes has one form only.
    if (bytes < 1024) {
        //% "%n bytes"
        return qtTrId("trivex-app-bytes", int(bytes));
    }
    return QLocale().formattedDataSize(bytes, 2, QLocale::DataSizeTraditionalFormat);
}

bool Desktop::isWholePem(const QString &path) const
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    return file.readAll().trimmed().endsWith("-----") && file.size() > 0;
}

bool Desktop::hasContents(const QString &path) const
{
    const QFileInfo info(path);
    return info.isFile() && info.isWritable() && info.size() > 0;
}

QString Desktop::whyNotWritten(const QString &folder) const
{
    const QFileInfo info(folder);
    if (!info.isDir()) {
        //% "The folder does not exist any more. Choose another one."
        return qtTrId("trivex-app-write-no-folder");
    }
    if (!info.isWritable()) {
        //% "You may not write to this folder. Choose another one."
        return qtTrId("trivex-app-write-denied");
    }
    const QStorageInfo storage(folder);
    if (storage.isValid() && storage.isReadOnly()) {
        //% "This disk is write-protected. Choose another folder."
        return qtTrId("trivex-app-write-read-only");
    }
    constexpr qint64 little = 64 * 1024;
    if (storage.isValid() && storage.bytesAvailable() < little) {
        //% "The disk is full. Free some space or choose another folder."
        return qtTrId("trivex-app-write-full");
    }
    //% "The file could not be written whole. Choose another folder or check the disk."
    return qtTrId("trivex-app-write-failed");
}

QString Desktop::whyNotRead(const QString &path) const
{
    const QFileInfo info(path);
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

QString Desktop::plainHex(const QString &text)
{
    // A separator may be missing anywhere: groups are told apart by their form.
    static const QRegularExpression group(
        QStringLiteral("\\G(-[0-9A-F]{1,2}|[0-9A-F]{2}|^[0-9A-F]$):?"));
    QStringList bytes;
    int end = 0;
    auto matches = group.globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const int value = match.captured(1).toInt(nullptr, 16);
        bytes += QStringLiteral("%1").arg(value & 0xff, 2, 16, QLatin1Char('0')).toUpper();
        end = match.capturedEnd();
    }
    if (end != text.size())
        return text;
    return bytes.join(QLatin1Char(':'));
}

QString Desktop::marked(const QString &text, const QString &pattern, const QString &color) const
{
    if (pattern.isEmpty())
        return text.toHtmlEscaped();
    QString result;
    int from = 0;
    for (;;) {
        const int at = text.indexOf(pattern, from, Qt::CaseInsensitive);
        if (at < 0)
            break;
        result += text.mid(from, at - from).toHtmlEscaped() + QStringLiteral("<b><u><font color=\"")
            + color + QStringLiteral("\">") + text.mid(at, pattern.size()).toHtmlEscaped()
            + QStringLiteral("</font></u></b>");
        from = at + pattern.size();
    }
    return result + text.mid(from).toHtmlEscaped();
}

} // namespace Trivex
