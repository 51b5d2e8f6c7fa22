// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/keychoicemodel.h"

#include "tools/certifiablekey.h"

#include <algorithm>

namespace Trivex {

namespace {

QString titleOf(const TokenKeyFacts &key)
{
    //% "Key without a name"
    const QString name = key.label.isEmpty() ? qtTrId("trivex-app-key-nameless") : key.label;
    return key.isBare()
        //% "%1, without a certificate"
        ? qtTrId("trivex-app-key-bare").arg(name)
        //% "%1, has a certificate"
        : qtTrId("trivex-app-key-certified").arg(name);
}

} // namespace

KeyChoiceModel::KeyChoiceModel(QObject *parent)
    : QAbstractListModel(parent)
{
    connect(&m_monitor, &TokenMonitor::changed, this, [this](const QString &storeId) {
        if (storeId == m_storeId)
            refresh();
    });
}

void KeyChoiceModel::setStoreId(const QString &storeId)
{
    if (storeId == m_storeId)
        return;
    m_storeId = storeId;
    refresh();
    Q_EMIT storeIdChanged();
}

void KeyChoiceModel::refresh()
{
    QVector<TokenKeyFacts> keys = TokenMonitor::token(m_storeId).keyFacts;
    keys.erase(std::remove_if(keys.begin(), keys.end(),
                              [](const TokenKeyFacts &key) { return !canBeCertified(key); }),
               keys.end());
    if (keys == m_keys)
        return;
    beginResetModel();
    m_keys = keys;
    endResetModel();
    Q_EMIT countChanged();
}

int KeyChoiceModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant KeyChoiceModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const bool isNew = index.row() == 0;
    if (role == KeyIdRole)
        return isNew ? QString() : m_keys.at(index.row() - 1).id;
    if (role != TitleRole && role != Qt::DisplayRole)
        return {};
    //% "A new key"
    return isNew ? qtTrId("trivex-app-key-new") : titleOf(m_keys.at(index.row() - 1));
}

QHash<int, QByteArray> KeyChoiceModel::roleNames() const
{
    return {{KeyIdRole, QByteArrayLiteral("keyId")}, {TitleRole, QByteArrayLiteral("title")}};
}

} // namespace Trivex
