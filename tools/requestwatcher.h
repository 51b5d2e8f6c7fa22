// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractItemModel>
#include <QHash>
#include <QPointer>
#include <QSet>
#include <QTimer>

namespace Trivex {

/// Tells when a saved request goes because its certificate has come, and not because somebody
/// deleted it. The list of requests is rebuilt from its directory at each change, so the names
/// before and after are compared; a long list is rebuilt a part at a time, so a request whose file
/// is still there is only on its way.
class RequestWatcher : public QObject {
    Q_OBJECT
    /// The model of saved requests that it watches. Not owned.
    Q_PROPERTY(QAbstractItemModel *requests READ requests WRITE setRequests NOTIFY requestsChanged)
public:
    explicit RequestWatcher(QObject *parent = nullptr);

    QAbstractItemModel *requests() const;
    void setRequests(QAbstractItemModel *requests);

    /// A key bundle has appeared on a token: what vanishes next has arrived.
    Q_INVOKABLE void noteKeyBundle();
    /// The user deletes or replaces the request `fileName`: its vanishing is no arrival.
    Q_INVOKABLE void noteDeleted(const QString &fileName);

Q_SIGNALS:
    void requestsChanged();
    /// The certificate for the request of this name has come.
    void arrived(const QString &name);

private:
    struct Known {
        QString name;
        QString path;
    };

    QHash<QString, Known> listed() const;
    void compare();

    QPointer<QAbstractItemModel> m_requests;
    QHash<QString, Known> m_known; ///< by the names of their files
    QSet<QString> m_deleted;
    bool m_expecting = false;
    QTimer m_later;
    QTimer m_forget;
};

} // namespace Trivex
