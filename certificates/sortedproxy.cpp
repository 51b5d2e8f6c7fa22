// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/sortedproxy.h"

#include <QSignalBlocker>

#include <algorithm>

namespace Trivex {

SortedProxy::SortedProxy(QObject *parent)
    : QSortFilterProxyModel(parent)
{
    emptyBase();
    // Each reset makes the base class forget even that it has nothing.
    connect(this, &QAbstractItemModel::modelReset, this, &SortedProxy::emptyBase);
    connect(this, &QAbstractItemModel::layoutChanged, this, [this] {
        // Not ours: somebody has asked the base class for another order, or to look again.
        if (m_layouts == 0 && m_isBuilt) {
            emptyBase();
            noteAll(m_source);
            rechoose();
        }
    });
}

SortedProxy::~SortedProxy() = default;

/// The base class has an empty mapping, and so tells of nothing when its properties change.
void SortedProxy::emptyBase()
{
    const QSignalBlocker quiet(this);
    QAbstractProxyModel::setSourceModel(nullptr);
    QSortFilterProxyModel::invalidate();
    QSortFilterProxyModel::rowCount();
    if (m_source)
        QAbstractProxyModel::setSourceModel(m_source);
}

void SortedProxy::setSourceModel(QAbstractItemModel *model)
{
    if (model == sourceModel())
        return;
    beginResetModel();
    for (const QMetaObject::Connection &connection : qAsConst(m_connections))
        disconnect(connection);
    m_connections.clear();
    m_source = nullptr;
    emptyBase();
    m_source = model;
    forget();
    QAbstractProxyModel::setSourceModel(model);
    if (model)
        follow(model);
    endResetModel();
}

void SortedProxy::follow(QAbstractItemModel *model)
{
    using Model = QAbstractItemModel;
    const auto begin = [this] {
        beginResetModel();
        forget();
    };
    const auto end = [this] { endResetModel(); };
    m_connections = {
        connect(model, &Model::rowsInserted, this, &SortedProxy::rowsCame),
        connect(model, &Model::rowsAboutToBeRemoved, this, &SortedProxy::rowsGo),
        connect(model, &Model::rowsRemoved, this, &SortedProxy::rowsGone),
        connect(model, &Model::rowsAboutToBeMoved, this, &SortedProxy::layoutBegins),
        connect(model, &Model::rowsMoved, this, &SortedProxy::layoutEnds),
        connect(model, &Model::layoutAboutToBeChanged, this, &SortedProxy::layoutBegins),
        connect(model, &Model::layoutChanged, this, &SortedProxy::layoutEnds),
        connect(model, &Model::dataChanged, this, &SortedProxy::rowsChanged),
        connect(model, &Model::headerDataChanged, this,
                [this](Qt::Orientation orientation, int first, int last) {
                    if (orientation == Qt::Horizontal)
                        Q_EMIT headerDataChanged(orientation, first, last);
                }),
        connect(model, &Model::modelAboutToBeReset, this, begin),
        connect(model, &Model::modelReset, this, end),
        connect(model, &Model::columnsAboutToBeInserted, this, begin),
        connect(model, &Model::columnsInserted, this, end),
        connect(model, &Model::columnsAboutToBeRemoved, this, begin),
        connect(model, &Model::columnsRemoved, this, end),
        connect(model, &Model::columnsAboutToBeMoved, this, begin),
        connect(model, &Model::columnsMoved, this, end),
        connect(model, &QObject::destroyed, this,
                [this] {
                    m_source = nullptr;
                    forget();
                }),
    };
}

void SortedProxy::forget()
{
    ++m_serial;
    m_order.clear();
    m_shown.clear();
    m_isBuilt = false;
    noteAll(m_source);
}

bool SortedProxy::isBefore(int row, int other) const
{
    const int way = m_isSorted ? compare(row, other) : 0;
    if (way == 0)
        return row < other;
    return m_isDescending ? way > 0 : way < 0;
}

std::vector<int> SortedProxy::ordered() const
{
    m_isSorted = sortColumn() >= 0;
    m_isDescending = sortOrder() == Qt::DescendingOrder;
    std::vector<int> rows;
    const int count = m_source ? m_source->rowCount() : 0;
    for (int row = 0; row < count; ++row) {
        if (belongs(row))
            rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end(), [this](int a, int b) { return isBefore(a, b); });
    return rows;
}

std::vector<int> SortedProxy::found() const
{
    std::vector<int> rows;
    rows.reserve(m_order.size());
    std::copy_if(m_order.cbegin(), m_order.cend(), std::back_inserter(rows),
                 [this](int row) { return isFound(row); });
    return rows;
}

void SortedProxy::build() const
{
    if (m_isBuilt)
        return;
    m_isBuilt = true;
    m_order = ordered();
    m_shown = found();
}

QModelIndex SortedProxy::index(int row, int column, const QModelIndex &parent) const
{
    build();
    const bool exists = !parent.isValid() && row >= 0 && row < int(m_shown.size()) && column >= 0
        && column < columnCount();
    return exists ? createIndex(row, column) : QModelIndex();
}

QModelIndex SortedProxy::parent(const QModelIndex &) const
{
    return {};
}

QModelIndex SortedProxy::sibling(int row, int column, const QModelIndex &) const
{
    return index(row, column);
}

int SortedProxy::rowCount(const QModelIndex &parent) const
{
    build();
    return parent.isValid() ? 0 : int(m_shown.size());
}

int SortedProxy::columnCount(const QModelIndex &parent) const
{
    return m_source && !parent.isValid() ? m_source->columnCount() : 0;
}

bool SortedProxy::hasChildren(const QModelIndex &parent) const
{
    return rowCount(parent) > 0 && columnCount(parent) > 0;
}

QVariant SortedProxy::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (!m_source)
        return {};
    if (orientation == Qt::Horizontal)
        return m_source->headerData(section, orientation, role);
    build();
    return section >= 0 && section < int(m_shown.size())
        ? m_source->headerData(m_shown[size_t(section)], orientation, role)
        : QVariant();
}

QModelIndex SortedProxy::mapToSource(const QModelIndex &index) const
{
    if (!index.isValid() || index.model() != this || !m_source
        || index.row() >= int(m_shown.size()))
        return {};
    return m_source->index(m_shown[size_t(index.row())], index.column());
}

QModelIndex SortedProxy::mapFromSource(const QModelIndex &index) const
{
    if (!index.isValid() || index.model() != m_source || index.parent().isValid())
        return {};
    build();
    const std::vector<Run> runs = runsOf(index.row(), index.row());
    return runs.empty() ? QModelIndex() : createIndex(runs.front().first, index.column());
}

bool SortedProxy::removeRows(int row, int count, const QModelIndex &parent)
{
    build();
    if (parent.isValid() || row < 0 || count <= 0 || row + count > int(m_shown.size()))
        return false;
    std::vector<int> rows(m_shown.begin() + row, m_shown.begin() + row + count);
    std::sort(rows.begin(), rows.end(), std::greater<int>());
    return std::all_of(rows.cbegin(), rows.cend(),
                       [this](int one) { return m_source->removeRows(one, 1); });
}

} // namespace Trivex
