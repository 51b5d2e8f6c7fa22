// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/listfolder.h"

#include "qca/base/bounds.h"
#include "qca/questions/background.h"

#include <QDir>

#include <memory>

namespace Trivex {

namespace {

constexpr int SettleMs = 200; // files come in swarms, and are announced before they are full
constexpr int RetryMs = 2000; // while there is no folder to watch

qint64 bytesOf(const QVector<QByteArray> &lists)
{
    qint64 bytes = 0;
    for (const QByteArray &list : lists)
        bytes += list.size();
    return bytes;
}

} // namespace

ListFolder::ListFolder(const QString &path, QObject *parent)
    : QObject(parent)
    , m_path(path)
{
    m_later.setSingleShot(true);
    m_later.setInterval(SettleMs);
    connect(&m_later, &QTimer::timeout, this, &ListFolder::read);
    m_retry.setSingleShot(true);
    m_retry.setInterval(RetryMs);
    connect(&m_retry, &QTimer::timeout, this, &ListFolder::watch);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &ListFolder::look);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] {
        look();
        watch(); // the folder itself may have gone, and another be there by now
    });
    watch();
}

ListFolder::~ListFolder() = default;

void ListFolder::watch()
{
    if (!m_watcher.directories().isEmpty())
        return;
    const bool isThere = QDir(m_path).exists();
    if (!isThere || !m_watcher.addPath(m_path))
        m_retry.start();
    if (isThere)
        read();
}

ListFolder::Files ListFolder::readAll(const QString &folder, const Files &known)
{
    Files files;
    qint64 left = MaxListBytes;
    const auto entries =
        QDir(folder).entryInfoList({QStringLiteral("*.crl"), QStringLiteral("*.pem"),
                                    QStringLiteral("*.crt"), QStringLiteral("*.cer")},
                                   QDir::Files | QDir::Readable, QDir::Name);
    for (const QFileInfo &entry : entries) {
        File file;
        file.stamp =
            QStringLiteral("%1 %2").arg(entry.size()).arg(entry.lastModified().toMSecsSinceEpoch());
        const auto before = known.constFind(entry.fileName());
        const bool isKnown = before != known.constEnd() && before->stamp == file.stamp;
        if (isKnown)
            file = *before;
        if (!isKnown || (file.isLeftOut && file.bytes <= left)) {
            file.content = ListFile::read(entry.filePath());
            file.bytes = bytesOf(file.content.lists);
        }
        // Those that fit behind it count all the same.
        file.isLeftOut = file.bytes > left;
        if (file.isLeftOut)
            file.content = {};
        else
            left -= file.bytes;
        files.insert(entry.fileName(), file);
    }
    return files;
}

QVector<QByteArray> ListFolder::listsNow(const QString &path, qint64 *bytes)
{
    QVector<QByteArray> lists;
    const Files files = readAll(path, {});
    for (const File &file : files) {
        lists += file.content.lists;
        if (bytes)
            *bytes += file.bytes;
    }
    return lists;
}

QVector<ListFolder::Place> ListFolder::placesIn(const Files &files) const
{
    QStringList names = files.keys();
    names.sort();
    QVector<Place> places;
    for (const QString &name : qAsConst(names)) {
        const ListFile file = files.value(name).content;
        for (const QByteArray &list : file.lists)
            places += {list, QDir(m_path).filePath(name), !file.holdsMore};
    }
    return places;
}

void ListFolder::read()
{
    if (m_isReading) {
        m_readAgain = true;
        return;
    }
    m_isReading = true;
    const auto found = std::make_shared<Files>();
    runInBackground([path = m_path, known = m_files, found] { *found = readAll(path, known); },
                    this, [this, found] { setFiles(*found); });
}

void ListFolder::setFiles(const Files &files)
{
    m_isReading = false;
    m_files = files;
    const QVector<Place> places = placesIn(files);
    QStringList paths;
    for (const Place &place : places) {
        if (paths.isEmpty() || paths.last() != place.path)
            paths += place.path;
    }
    // Written to in place, a file changes without its folder.
    if (!paths.isEmpty())
        m_watcher.addPaths(paths);
    if (m_readAgain) {
        m_readAgain = false;
        m_later.start();
    }
    // A list may have moved, or got company in its file, while all are the same.
    if (places == m_places)
        return;
    m_places = places;
    m_lists.clear();
    for (const Place &place : places)
        m_lists += place.der;
    Q_EMIT changed();
}

} // namespace Trivex
