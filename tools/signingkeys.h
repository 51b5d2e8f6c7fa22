// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokens.h"

#include <QSet>
#include <QSortFilterProxyModel>

namespace Trivex {

/// The rows of another model, such as a filter over an `EntryModel`, without those whose key its
/// token can't sign with, as the token itself says. Where it says nothing, and until it has been
/// asked, its keys stay.
class SigningKeys : public QSortFilterProxyModel {
    Q_OBJECT
    /// The model to choose from.
    Q_PROPERTY(QAbstractItemModel *source READ sourceModel WRITE setSource NOTIFY sourceChanged)
    /// Asks the tokens, once each time that one is there. False at first.
    Q_PROPERTY(bool asking READ isAsking WRITE setAsking NOTIFY askingChanged)
    /// How many rows are left out.
    Q_PROPERTY(int leftOut READ leftOut NOTIFY leftOutChanged)
public:
    explicit SigningKeys(QObject *parent = nullptr);

    void setSource(QAbstractItemModel *source);
    bool isAsking() const { return m_isAsking; }
    void setAsking(bool asking);
    int leftOut() const { return m_leftOut; }

Q_SIGNALS:
    void sourceChanged();
    void askingChanged();
    void leftOutChanged();

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;

private:
    void noteToken(const QString &storeId);
    void ask(const QString &storeId);
    void count();

    bool m_isAsking = false;
    int m_leftOut = 0;
    int m_entryId = -1; ///< roles of the source
    int m_storeId = -1;
    QHash<QString, QSet<QString>> m_unfit; ///< ids of entries, by their store
    QSet<QString> m_asked; ///< the tokens that were asked since they came
    TokenMonitor m_monitor;
};

} // namespace Trivex
