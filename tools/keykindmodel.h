// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokens.h"

#include <QAbstractListModel>

namespace Trivex {

/// The kinds of keys that a token can make, as far as `KeyRequest` knows them. The token is asked
/// once, beside the GUI thread; until it has told, RSA and the curves of NIST stand here.
class KeyKindModel : public QAbstractListModel {
    Q_OBJECT
    /// The id of the token's key store.
    Q_PROPERTY(QString storeId READ storeId WRITE setStoreId NOTIFY storeIdChanged)
    /// How many kinds of key the token can make.
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    enum Role {
        KindRole = Qt::UserRole, ///< a `KeyRequest.KeyKind`
        TitleRole,
    };

    explicit KeyKindModel(QObject *parent = nullptr);

    QString storeId() const { return m_storeId; }
    void setStoreId(const QString &storeId);
    int count() const { return int(m_kinds.size()); }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// What people call a `KeyRequest.KeyKind`; empty for another number.
    Q_INVOKABLE static QString title(int kind);

Q_SIGNALS:
    void storeIdChanged();
    void countChanged();

private:
    void takeLook();
    void refresh();

    QString m_storeId;
    bool m_isAsked = false;
    QList<int> m_kinds;
    TokenMonitor m_monitor;
};

} // namespace Trivex
