// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokens.h"

#include <QAbstractListModel>

namespace Trivex {

/// The keys of a token that a request can be for: first a new one, then those that are there, with
/// or without a certificate.
class KeyChoiceModel : public QAbstractListModel {
    Q_OBJECT
    /// The id of the token's key store.
    Q_PROPERTY(QString storeId READ storeId WRITE setStoreId NOTIFY storeIdChanged)
    /// At least 1.
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    enum Role {
        KeyIdRole = Qt::UserRole, ///< for `KeyRequest.takeKey`; empty for a new key
        TitleRole,
    };

    explicit KeyChoiceModel(QObject *parent = nullptr);

    QString storeId() const { return m_storeId; }
    void setStoreId(const QString &storeId);
    int count() const { return int(m_keys.size()) + 1; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void storeIdChanged();
    void countChanged();

private:
    void refresh();

    QString m_storeId;
    QVector<TokenKeyFacts> m_keys;
    TokenMonitor m_monitor;
};

} // namespace Trivex
