// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/tokenlistmodel.h"

#include "tools/followed.h"
#include "tools/tokeninfo.h"

#include <algorithm>

namespace Trivex {

TokenListModel::TokenListModel(QObject *parent)
    : QAbstractListModel(parent)
{
    m_later.setSingleShot(true);
    m_later.setInterval(0);
    connect(&m_later, &QTimer::timeout, this, &TokenListModel::refresh);
    connect(&m_monitor, &TokenMonitor::changed, this, [this] { m_later.start(); });
    refresh();
}

EntryModel *TokenListModel::entries() const
{
    return m_entries;
}

void TokenListModel::setEntries(EntryModel *entries)
{
    if (!followNext(&m_entries, entries, this))
        return;
    if (entries)
        connect(entries, &EntryModel::countsChanged, this, [this] { m_later.start(); });
    m_later.start();
    Q_EMIT entriesChanged();
}

int TokenListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_tokens.size();
}

QHash<int, QByteArray> TokenListModel::roleNames() const
{
    return {
        {StoreIdRole, QByteArrayLiteral("storeId")},    {NameRole, QByteArrayLiteral("name")},
        {PresentRole, QByteArrayLiteral("present")},    {BusyRole, QByteArrayLiteral("busy")},
        {BusyTextRole, QByteArrayLiteral("busyText")},  {CountRole, QByteArrayLiteral("count")},
        {ReadOnlyRole, QByteArrayLiteral("readOnly")},  {PinTextRole, QByteArrayLiteral("pinText")},
        {TakesKeysRole, QByteArrayLiteral("takesKeys")}};
}

QVariant TokenListModel::data(const QModelIndex &index, int role) const
{
    if (index.row() < 0 || index.row() >= m_tokens.size())
        return {};
    const TokenStatus &token = m_tokens.at(index.row());
    switch (role) {
    case StoreIdRole:
        return token.keyStoreId;
    case NameRole:
        return token.name;
    case PresentRole:
        return token.present;
    case BusyRole:
        return token.busy || token.loading;
    case BusyTextRole:
        return TokenInfo::busyText(token);
    case CountRole:
        return m_entries ? m_entries->countInStore(token.keyStoreId) : 0;
    case ReadOnlyRole:
        return token.readOnly;
    case PinTextRole:
        return TokenInfo::pinText(token.pinState);
    case TakesKeysRole:
        return token.present && !token.readOnly && token.pinState != PinState::NotSet;
    default:
        return {};
    }
}

bool TokenListModel::has(const QString &name) const
{
    return std::any_of(m_tokens.cbegin(), m_tokens.cend(),
                       [&name](const TokenStatus &token) { return token.name == name; });
}

bool TokenListModel::isPresent(const QString &name) const
{
    return std::any_of(m_tokens.cbegin(), m_tokens.cend(), [&name](const TokenStatus &token) {
        return token.present && token.name == name;
    });
}

QStringList TokenListModel::works() const
{
    QStringList lines;
    for (const TokenStatus &token : TokenMonitor::tokens()) {
        if (token.busy && token.busyWith != Purpose::Look)
            lines += token.name + QLatin1String(": ") + TokenInfo::busyText(token);
    }
    return lines;
}

void TokenListModel::stopWorks() const
{
    for (const TokenStatus &token : TokenMonitor::tokens()) {
        if (token.busy && token.busyWith != Purpose::Look)
            TokenMonitor::cancel(token.keyStoreId);
    }
}

QString TokenListModel::storeIdOf(const QString &name) const
{
    const auto found =
        std::find_if(m_tokens.cbegin(), m_tokens.cend(),
                     [&name](const TokenStatus &token) { return token.name == name; });
    return found == m_tokens.cend() ? QString() : found->keyStoreId;
}

void TokenListModel::refresh()
{
    QVector<TokenStatus> tokens;
    const QVector<TokenStatus> known = TokenMonitor::tokens();
    std::copy_if(
        known.cbegin(), known.cend(), std::back_inserter(tokens),
        [](const TokenStatus &status) { return !status.name.isEmpty() && !status.isTrust; });
    const bool same = std::equal(
        tokens.cbegin(), tokens.cend(), m_tokens.cbegin(), m_tokens.cend(),
        [](const TokenStatus &a, const TokenStatus &b) { return a.keyStoreId == b.keyStoreId; });
    if (same) {
        m_tokens = tokens;
        if (!tokens.isEmpty())
            Q_EMIT dataChanged(index(0), index(tokens.size() - 1));
        return;
    }
    beginResetModel();
    m_tokens = tokens;
    endResetModel();
    Q_EMIT countChanged();
}

} // namespace Trivex
