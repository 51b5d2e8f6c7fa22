// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokens.h"
#include "tools/entrymodel.h"

#include <QPointer>

namespace Trivex {

/// The tokens of this machine, live: inserted, removed, busy. A removed token keeps its row while
/// the process lives, marked as not present. A trust module's certificates are no token, whether
/// any of them is listed or not.
class TokenListModel : public QAbstractListModel {
    Q_OBJECT
    /// Where the counts come from; also tells system stores, which are not listed here.
    Q_PROPERTY(Trivex::EntryModel *entries READ entries WRITE setEntries NOTIFY entriesChanged)
    /// How many tokens there are.
    Q_PROPERTY(int count READ rowCount NOTIFY countChanged)
public:
    enum Role {
        StoreIdRole = Qt::UserRole + 1, ///< QString
        NameRole, ///< QString
        PresentRole, ///< bool
        BusyRole, ///< bool
        BusyTextRole, ///< QString, what it is doing
        CountRole, ///< int, rows that live on it
        ReadOnlyRole, ///< bool
        PinTextRole, ///< QString, see `TokenInfo::pinText`
        TakesKeysRole, ///< bool, keys can be made on it: it is there, takes objects and has a PIN
    };

    explicit TokenListModel(QObject *parent = nullptr);

    EntryModel *entries() const;
    void setEntries(EntryModel *entries);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// True for a token of this name, inserted or not.
    Q_INVOKABLE bool has(const QString &name) const;
    /// Whether a token of that label is there.
    Q_INVOKABLE bool isPresent(const QString &name) const;
    /// The id of the key store of this name; empty where no token has it.
    Q_INVOKABLE QString storeIdOf(const QString &name) const;
    /// What tokens do at this moment beside being read: a line each, with the token's name.
    Q_INVOKABLE QStringList works() const;
    /// Asks all of that to end, whoever has started it. Its outcome comes the usual way.
    Q_INVOKABLE void stopWorks() const;

Q_SIGNALS:
    void entriesChanged();
    void countChanged();

private:
    void refresh();

    QPointer<EntryModel> m_entries;
    QVector<TokenStatus> m_tokens;
    TokenMonitor m_monitor;
    QTimer m_later;
};

} // namespace Trivex
