// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/sortedproxy.h"

#include <QScopedValueRollback>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>

namespace Trivex {

SortedProxy::SortedProxy(QObject *parent)
    : QSortFilterProxyModel(parent)
{
    emptyBase();
    // Each reset makes the base class forget even that it has nothing.
    connect(this, &QAbstractItemModel::modelReset, this, &SortedProxy::emptyBase);
    connect(this, &QAbstractItemModel::layoutChanged, this, [this] {
        // This hears of it first, so one that follows from it is not taken for it.
        if (!std::exchange(m_isOwnLayout, false))
            lookAgain();
    });
}

SortedProxy::~SortedProxy() = default;

/// Somebody has asked the base class for another order, or to look again.
void SortedProxy::lookAgain()
{
    emptyBase();
    if (!m_isBuilt)
        return;
    m_isLost = true;
    rechoose();
}

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
    leave();
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
                    const int rows = rowCount();
                    if (orientation == Qt::Horizontal)
                        Q_EMIT headerDataChanged(orientation, first, last);
                    else if (rows > 0)
                        Q_EMIT headerDataChanged(orientation, 0, rows - 1);
                }),
        connect(model, &QObject::destroyed, this,
                [this] {
                    leave();
                    forget();
                }),
    };
    followResets(model);
}

void SortedProxy::followResets(QAbstractItemModel *model)
{
    using Model = QAbstractItemModel;
    const auto begins = &SortedProxy::resetBegins;
    const auto ends = &SortedProxy::resetEnds;
    m_connections += {
        connect(model, &Model::modelAboutToBeReset, this, begins),
        connect(model, &Model::modelReset, this, ends),
        connect(model, &Model::columnsAboutToBeInserted, this, begins),
        connect(model, &Model::columnsInserted, this, ends),
        connect(model, &Model::columnsAboutToBeRemoved, this, begins),
        connect(model, &Model::columnsRemoved, this, ends),
        connect(model, &Model::columnsAboutToBeMoved, this, begins),
        connect(model, &Model::columnsMoved, this, ends),
    };
}

/// Whoever reads in the middle of a reset sees the rows that were; they are forgotten at its end.
void SortedProxy::resetBegins()
{
    ++m_resets;
    beginResetModel();
}

void SortedProxy::resetEnds()
{
    if (m_resets == 0)
        resetBegins(); // a source that does not say so beforehand
    --m_resets;
    m_doomed = {0, -1};
    forget();
    const QScopedValueRollback<int> changing(m_changes, m_changes + 1);
    endResetModel();
}

/// The source is no longer this one, and neither is what it has begun.
void SortedProxy::leave()
{
    for (const QMetaObject::Connection &connection : qAsConst(m_connections))
        disconnect(connection);
    m_connections.clear();
    m_source = nullptr;
    m_layouts = 0;
    m_resets = 0;
    m_doomed = {0, -1};
    m_places.clear();
    m_rowsThere.clear();
}

void SortedProxy::forget()
{
    ++m_serial;
    m_order.clear();
    m_shown.clear();
    m_coming.clear();
    m_count = 0;
    m_isBuilt = false;
    m_isLost = false;
    // Somebody was told of rows that are to come or go.
    m_mustReset = m_brackets > 0;
    m_isStale = m_mustReset;
    noteAll(m_source);
}

/// The numbers of rows don't hold: another listener has changed or read the rows of the source in
/// between.
void SortedProxy::startOver()
{
    ++m_serial;
    if (m_brackets > 0 || m_layouts > 0 || m_resets > 0) {
        m_shown.replaceEach([](int) { return -1; });
        std::fill(m_coming.begin(), m_coming.end(), -1);
        m_order.clear();
        m_isStale = true;
        m_mustReset = true;
        return;
    }
    const QScopedValueRollback<int> changing(m_changes, m_changes + 1);
    ++m_brackets;
    beginResetModel();
    --m_brackets;
    forget();
    endResetModel();
}

/// Whether the rows of the source are those that the numbers speak of.
bool SortedProxy::isInStep() const
{
    return m_layouts == 0 && m_resets == 0
        && (!m_isBuilt || m_count == (m_source ? m_source->rowCount() : 0));
}

/// Whether rows may stand in another order than that of `isBefore()`, because nobody wants rows
/// moved when they change.
bool SortedProxy::isLoose() const
{
    m_isLoose = m_isLoose || !dynamicSortFilter();
    return m_isLoose;
}

bool SortedProxy::isDoomed(int row) const
{
    return row >= m_doomed.first && row <= m_doomed.last && m_source->rowCount() == m_doomedCount;
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
    m_isSorted = sortColumn() >= 0 && sortColumn() < columnCount();
    m_isLoose = false;
    m_isDescending = sortOrder() == Qt::DescendingOrder;
    std::vector<int> rows;
    const int count = m_source ? m_source->rowCount() : 0;
    m_count = count;
    for (int row = 0; row < count; ++row) {
        if (!isDoomed(row) && belongs(row))
            rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end(), [this](int a, int b) { return isBefore(a, b); });
    return rows;
}

std::vector<int> SortedProxy::found() const
{
    std::vector<int> rows;
    rows.reserve(m_order.size());
    std::copy_if(m_order.begin(), m_order.end(), std::back_inserter(rows),
                 [this](int row) { return isFound(row); });
    return rows;
}

void SortedProxy::build() const
{
    if (m_isBuilt)
        return;
    m_isBuilt = true;
    m_order.assign(ordered());
    m_shown.assign(found());
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
    return section >= 0 && section < int(m_shown.size()) && m_shown[size_t(section)] >= 0
        ? m_source->headerData(m_shown[size_t(section)], orientation, role)
        : QVariant();
}

QModelIndex SortedProxy::mapToSource(const QModelIndex &index) const
{
    if (!index.isValid() || index.model() != this || !m_source || index.row() >= int(m_shown.size())
        || m_shown[size_t(index.row())] < 0)
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
    QVector<QPersistentModelIndex> rows; // whoever hears of one may remove others
    for (int place = row; place < row + count; ++place)
        rows.append(mapToSource(index(place, 0)));
    std::sort(rows.begin(), rows.end(),
              [](const auto &one, const auto &other) { return one.row() > other.row(); });
    return std::all_of(rows.cbegin(), rows.cend(), [this](const QPersistentModelIndex &one) {
        return m_source && one.isValid() && m_source->removeRows(one.row(), 1);
    });
}

} // namespace Trivex
