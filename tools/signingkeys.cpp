// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/signingkeys.h"

#include "tools/rows.h"

namespace Trivex {

SigningKeys::SigningKeys(QObject *parent)
    : QSortFilterProxyModel(parent)
{
    connect(&m_monitor, &TokenMonitor::changed, this, &SigningKeys::noteToken);
    connect(this, &QAbstractItemModel::rowsInserted, this, &SigningKeys::count);
    connect(this, &QAbstractItemModel::rowsRemoved, this, &SigningKeys::count);
    connect(this, &QAbstractItemModel::modelReset, this, &SigningKeys::count);
}

void SigningKeys::setSource(QAbstractItemModel *source)
{
    if (source == sourceModel())
        return;
    if (sourceModel())
        disconnect(sourceModel(), nullptr, this, nullptr);
    m_entryId = source ? roleNamed(*source, QStringLiteral("entryId")) : -1;
    m_storeId = source ? roleNamed(*source, QStringLiteral("storeId")) : -1;
    setSourceModel(source);
    if (source) {
        // Rows that are left out are none of this model's own.
        connect(source, &QAbstractItemModel::rowsInserted, this, &SigningKeys::count);
        connect(source, &QAbstractItemModel::rowsRemoved, this, &SigningKeys::count);
        connect(source, &QAbstractItemModel::modelReset, this, &SigningKeys::count);
    }
    count();
    Q_EMIT sourceChanged();
}

void SigningKeys::setAsking(bool asking)
{
    if (asking == m_isAsking)
        return;
    m_isAsking = asking;
    const QVector<TokenStatus> tokens = TokenMonitor::tokens();
    for (const TokenStatus &token : tokens)
        noteToken(token.keyStoreId);
    Q_EMIT askingChanged();
}

void SigningKeys::ask(const QString &storeId)
{
    const TokenStatus status = TokenMonitor::token(storeId);
    // Another token may be in its place after it was away.
    if (!status.present)
        m_asked.remove(storeId);
    const bool isReady = m_isAsking && status.present && status.isRead && !status.isTrust;
    if (!isReady || m_asked.contains(storeId))
        return;
    m_asked.insert(storeId);
    if (!TokenMonitor::look(storeId).isTaken)
        TokenMonitor::takeLook(storeId);
}

void SigningKeys::noteToken(const QString &storeId)
{
    ask(storeId);
    const QSet<QString> unfit = TokenMonitor::look(storeId).unfitToSign;
    if (unfit == m_unfit.value(storeId))
        return;
    m_unfit.insert(storeId, unfit);
    invalidateFilter();
    count();
}

void SigningKeys::count()
{
    const int all = sourceModel() ? sourceModel()->rowCount() : 0;
    const int left = all - rowCount();
    if (left == m_leftOut)
        return;
    m_leftOut = left;
    Q_EMIT leftOutChanged();
}

bool SigningKeys::filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    if (m_unfit.isEmpty())
        return true;
    const QModelIndex index = sourceModel()->index(sourceRow, 0, sourceParent);
    const auto unfit = m_unfit.constFind(index.data(m_storeId).toString());
    return unfit == m_unfit.cend() || !unfit->contains(index.data(m_entryId).toString());
}

} // namespace Trivex
