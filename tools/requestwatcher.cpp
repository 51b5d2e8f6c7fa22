// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/requestwatcher.h"

#include "qca/base/plaintext.h"
#include "qca/base/savedrequest.h"
#include "tools/followed.h"
#include "tools/rows.h"

#include <QFile>

#include <utility>

namespace Trivex {

namespace {
/// The directory watcher may take so long to report a deleted file.
constexpr int WatchMs = 5000;
constexpr int SettleMs = 50;
} // namespace

RequestWatcher::RequestWatcher(QObject *parent)
    : QObject(parent)
{
    m_later.setSingleShot(true);
    m_later.setInterval(SettleMs);
    connect(&m_later, &QTimer::timeout, this, &RequestWatcher::compare);
    m_forget.setSingleShot(true);
    m_forget.setInterval(WatchMs);
    connect(&m_forget, &QTimer::timeout, this, [this] { m_expecting = false; });
}

QAbstractItemModel *RequestWatcher::requests() const
{
    return m_requests;
}

void RequestWatcher::setRequests(QAbstractItemModel *requests)
{
    if (!followNext(&m_requests, requests, this))
        return;
    if (requests)
        followRows(requests, this, [this] { m_later.start(); });
    m_known = listed();
    Q_EMIT requestsChanged();
}

void RequestWatcher::noteKeyBundle()
{
    m_expecting = true;
    m_forget.start();
}

void RequestWatcher::noteDeleted(const QString &fileName)
{
    m_deleted.insert(fileName);
}

QHash<QString, RequestWatcher::Known> RequestWatcher::listed() const
{
    QHash<QString, Known> result;
    if (!m_requests)
        return result;
    const int nameRole = roleNamed(*m_requests, QStringLiteral("name"));
    const int certificateRole = roleNamed(*m_requests, QStringLiteral("certificate"));
    for (int i = 0; i < m_requests->rowCount(); ++i) {
        const QModelIndex index = m_requests->index(i, 0);
        auto *request = index.data(certificateRole).value<QObject *>();
        const QString file = request ? request->property("fileName").toString() : QString();
        const auto *saved = qobject_cast<SavedRequest *>(request);
        if (!file.isEmpty())
            result.insert(file,
                          {plainText(index.data(nameRole).toString()),
                           saved ? saved->requestFile() : QString()});
    }
    return result;
}

void RequestWatcher::compare()
{
    const QHash<QString, Known> before = std::exchange(m_known, listed());
    const QHash<QString, Known> now = m_known;
    QSet<QString> paths;
    for (const Known &known : now)
        paths.insert(known.path);
    for (auto it = before.cbegin(); it != before.cend(); ++it) {
        if (now.contains(it.key()))
            continue;
        if (QFile::exists(it->path) && !paths.contains(it->path))
            m_known.insert(it.key(), *it);
        else if (!m_deleted.remove(it.key()) && m_expecting)
            Q_EMIT arrived(it->name);
    }
}

} // namespace Trivex
