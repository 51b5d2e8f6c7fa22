// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/comboboxmodel.h"

#include <algorithm>

ComboBoxModel::ComboBoxModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

ComboBoxModel::~ComboBoxModel() = default;

int ComboBoxModel::rowCount(const QModelIndex &) const
{
    return m_rows.size();
}

QVariant ComboBoxModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return {};
    const Row &row = m_rows.at(index.row());
    switch (role) {
    case NameRole:
        return row.name;
    case IdRole:
        return row.id;
    case TypeRole:
        return row.type;
    default:
        return {};
    }
}

QHash<int, QByteArray> ComboBoxModel::roleNames() const
{
    static const QHash<int, QByteArray> names = {
        {NameRole, "name"}, {IdRole, "id"}, {TypeRole, "type"}};
    return names;
}

void ComboBoxModel::addRow(int id, const QString &name, const QString &type)
{
    beginInsertRows(QModelIndex(), m_rows.size(), m_rows.size());
    m_rows.append({id, name, type});
    endInsertRows();
}

ComboBoxModel::Row ComboBoxModel::rowAt(int position) const
{
    return position >= 0 && position < m_rows.size() ? m_rows.at(position) : Row();
}

bool ComboBoxModel::containsType(const QString &text) const
{
    return std::any_of(m_rows.begin(), m_rows.end(),
                       [&](const Row &row) { return row.type == text; });
}

int ComboBoxModel::firstSortedId()
{
    if (m_rows.isEmpty())
        return -1;
    std::sort(m_rows.begin(), m_rows.end(),
              [](const Row &a, const Row &b) { return a.type < b.type; });
    return m_rows.first().id;
}
