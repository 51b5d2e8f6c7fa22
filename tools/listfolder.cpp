// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/listfolder.h"

#include "qca/adapter/filecontents.h"
#include "qca/base/bounds.h"
#include "qca/base/processend.h"
#include "qca/base/regularfile.h"
#include "qca/questions/waiter.h"

#include <QDir>

#include <memory>
#include <system_error>
#include <thread>

namespace Trivex {

namespace {

constexpr int SettleMs = 200; // files come in swarms, and are announced before they are full

/// A certificate's file, of which there may be thousands, is not looked at any further.
bool mayHoldList(const QString &name, const QByteArray &bytes)
{
    return name.endsWith(QLatin1String(".crl"), Qt::CaseInsensitive) || bytes.contains(" CRL-----");
}

QVector<QByteArray> listsIn(const QString &path)
{
    QVector<QByteArray> lists;
    const auto bytes = readRegularFile(path);
    if (!bytes || !mayHoldList(path, *bytes))
        return lists;
    const FileContents contents = readFileContents(*bytes);
    for (const FileObject &object : contents.objects) {
        if (object.kind == FileObject::RevocationList)
            lists += object.der;
    }
    return lists;
}

/// A reading in a thread of its own, held by that thread, too.
template <class Result> struct Reading {
    Waiter waiter;
    Result result;
};

} // namespace

ListFolder::ListFolder(const QString &path, QObject *parent)
    : QObject(parent)
    , m_path(path)
{
    m_later.setSingleShot(true);
    m_later.setInterval(SettleMs);
    connect(&m_later, &QTimer::timeout, this, &ListFolder::read);
    const auto later = [this] { m_later.start(); };
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, later);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, later);
    watch();
}

ListFolder::~ListFolder() = default;

void ListFolder::watch()
{
    if (m_watcher.directories().isEmpty() && QDir(m_path).exists() && m_watcher.addPath(m_path))
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
        file.lists = before != known.constEnd() && before->stamp == file.stamp
            ? before->lists
            : listsIn(entry.filePath());
        for (const QByteArray &list : qAsConst(file.lists))
            left -= list.size();
        if (left < 0)
            break;
        files.insert(entry.fileName(), file);
    }
    return files;
}

void ListFolder::read()
{
    if (ProcessEnd::hasBegun())
        return;
    if (m_isReading) {
        m_readAgain = true;
        return;
    }
    ProcessEnd::expect();
    ProcessEnd::watchThisThread();
    m_isReading = true;
    const auto reading = std::make_shared<Reading<Files>>();
    // The connection keeps the reading, and the reading the connection, until it is used.
    const auto connection = std::make_shared<QMetaObject::Connection>();
    *connection = connect(
        &reading->waiter, &Waiter::resolved, this,
        [this, reading, connection] {
            disconnect(*connection);
            take(reading->result);
        },
        Qt::QueuedConnection);
    const auto run = [path = m_path, known = m_files, reading] {
        reading->result = readAll(path, known);
        reading->waiter.resolve();
    };
    try {
        std::thread([run, held = reading]() mutable {
            const ForeignCall call;
            run();
            held.reset();
        }).detach();
    } catch (const std::system_error &) {
        run();
    }
}

void ListFolder::take(const Files &files)
{
    m_isReading = false;
    m_files = files;
    QVector<QByteArray> lists;
    QStringList names = files.keys();
    names.sort();
    QStringList paths;
    for (const QString &name : qAsConst(names)) {
        lists += files.value(name).lists;
        if (!files.value(name).lists.isEmpty())
            paths += QDir(m_path).filePath(name);
    }
    // Written to in place, a file changes without its folder.
    if (!paths.isEmpty())
        m_watcher.addPaths(paths);
    if (m_readAgain) {
        m_readAgain = false;
        m_later.start();
    }
    if (lists == m_lists)
        return;
    m_lists = lists;
    Q_EMIT changed();
}

} // namespace Trivex
