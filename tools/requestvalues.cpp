// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/requestvalues.h"

#include "tools/requesttexts.h"
#include "tools/subjectattributes.h"

namespace Trivex {

RequestValues::RequestValues(Kind kind, QObject *parent)
    : QAbstractListModel(parent)
    , m_kind(kind)
{
}

int RequestValues::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant RequestValues::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const RequestValue &value = m_values.at(index.row());
    switch (role) {
    case TypeRole:
        return value.type;
    case Qt::DisplayRole:
    case TitleRole:
        return requestTitle(value.type);
    case ValueRole:
        return value.value;
    case ProblemRole:
        return requestProblemText(value.type, value.value, problemOf(value));
    default:
        return {};
    }
}

QHash<int, QByteArray> RequestValues::roleNames() const
{
    return {{TypeRole, QByteArrayLiteral("type")},
            {TitleRole, QByteArrayLiteral("title")},
            {ValueRole, QByteArrayLiteral("value")},
            {ProblemRole, QByteArrayLiteral("problem")}};
}

QStringList RequestValues::types() const
{
    return m_kind == Names ? subjectAttributeTypes() : RequestContents::alternativeTypes();
}

void RequestValues::setValues(const QList<RequestValue> &values)
{
    if (values == m_values)
        return;
    beginResetModel();
    m_values = values;
    endResetModel();
    Q_EMIT countChanged();
    Q_EMIT edited();
}

int RequestValues::add(const QString &type)
{
    if (problemOf({type, QString()}) != RequestContents::NoProblem)
        return -1;
    int row = count();
    for (int i = 0; i < count(); ++i) {
        if (m_values.at(i).type == type)
            row = i + 1;
    }
    beginInsertRows({}, row, row);
    m_values.insert(row, {type, QString()});
    endInsertRows();
    Q_EMIT countChanged();
    Q_EMIT edited();
    return row;
}

void RequestValues::setValue(int row, const QString &value)
{
    if (row < 0 || row >= count() || m_values.at(row).value == value)
        return;
    m_values[row].value = value;
    Q_EMIT dataChanged(index(row), index(row), {ValueRole, ProblemRole});
    Q_EMIT edited();
}

void RequestValues::remove(int row)
{
    if (row < 0 || row >= count())
        return;
    beginRemoveRows({}, row, row);
    m_values.removeAt(row);
    endRemoveRows();
    Q_EMIT countChanged();
    Q_EMIT edited();
}

int RequestValues::firstRefused() const
{
    for (int row = 0; row < count(); ++row) {
        if (RequestContents::isRefused(problemOf(m_values.at(row))))
            return row;
    }
    return -1;
}

QString RequestValues::title(const QString &type)
{
    return requestTitle(type);
}

RequestContents::Problem RequestValues::problemOf(const RequestValue &value) const
{
    return m_kind == Names ? RequestContents::problemOfName(value)
                           : RequestContents::problemOfAlternativeName(value);
}

} // namespace Trivex
