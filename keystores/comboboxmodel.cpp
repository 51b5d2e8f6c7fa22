// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/comboboxmodel.h"

#include <algorithm>

ComboBoxModel::ComboBoxModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

int ComboBoxModel::rowCount(const QModelIndex &parent) const
{
    Q_UNUSED(parent)
    return m_rows.size();
}

QVariant ComboBoxModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return QVariant();
    const Row &row = m_rows.at(index.row());
    switch (role) {
    case NameRole:
        return row.name;
    case IdRole:
        return row.id;
    case TypeRole:
        return row.type;
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> ComboBoxModel::roleNames() const
{
    static const QHash<int, QByteArray> names = {
        {NameRole, QByteArrayLiteral("name")},
        {IdRole, QByteArrayLiteral("id")},
        {TypeRole, QByteArrayLiteral("type")},
    };
    return names;
}

void ComboBoxModel::addRow(int id, const QString &name, const QString &type)
{
    const int row = m_rows.size();
    beginInsertRows(QModelIndex(), row, row);
    m_rows.append({id, name, type});
    endInsertRows();
}

ComboBoxModel::Row ComboBoxModel::rowAt(int position) const
{
    return m_rows.value(position);
}

bool ComboBoxModel::containsType(const QString &type) const
{
    return std::any_of(m_rows.cbegin(), m_rows.cend(),
                       [&type](const Row &row) { return row.type == type; });
}

int ComboBoxModel::firstSortedId()
{
    if (m_rows.isEmpty())
        return -1;
    std::sort(m_rows.begin(), m_rows.end(),
              [](const Row &left, const Row &right) { return left.type < right.type; });
    return m_rows.first().id;
}
