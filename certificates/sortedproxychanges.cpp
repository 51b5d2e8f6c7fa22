// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
// How a `SortedProxy` takes up the changes of its source.
#include "certificates/sortedproxy.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace Trivex {

namespace {

/// Rows that come in larger numbers are merged with the others, not inserted one by one.
constexpr size_t OneByOne = 64;

void dropRange(RowList &rows, int first, int last)
{
    rows.eraseIf([first, last](int row) { return row >= first && row <= last; });
}

/// What `change` makes of each.
template <typename Change> void replaceEach(std::vector<int> &rows, Change change)
{
    std::transform(rows.begin(), rows.end(), rows.begin(), change);
}

} // namespace

void SortedProxy::rowsCame(const QModelIndex &parent, int first, int last)
{
    if (parent.isValid())
        return;
    ++m_serial;
    m_doomed = {0, -1}; // a removal that was under way is over
    if (!m_isBuilt) {
        noteAll(m_source);
        rechoose();
        return;
    }
    if (m_layouts > 0 || m_resets > 0 || m_count + last - first + 1 != m_source->rowCount())
        return startOver();
    m_count += last - first + 1;
    noteInserted(first, last);
    if (last + 1 < m_count)
        renumber(first, last - first + 1);
    if (m_isStale || !isSteady())
        return rechoose();
    std::vector<int> rows;
    for (int row = first; row <= last; ++row) {
        if (belongs(row))
            rows.push_back(row);
    }
    if (rows.size() > OneByOne || isChanging()) {
        takeUp(std::move(rows));
        return;
    }
    const unsigned serial = m_serial;
    for (const int row : rows) {
        takeUp(row);
        if (serial != m_serial)
            return rechoose();
    }
}

/// Where `row` is to be put among `rows`.
size_t SortedProxy::placeFor(const RowList &rows, int row) const
{
    if (isLoose())
        return rows.upperBound(row, std::less<int>());
    return rows.upperBound(row, [this](int one, int other) { return isBefore(one, other); });
}

void SortedProxy::takeUp(int row)
{
    const size_t place = placeFor(m_order, row);
    m_order.insert(place, row);
    if (!isFound(row))
        return;
    // Where all are shown, it is the same place, and comparing names is what costs most.
    const bool showsAll = m_shown.size() + 1 == m_order.size();
    insertShown(int(showsAll ? place : placeFor(m_shown, row)), {row});
}

void SortedProxy::takeUp(std::vector<int> rows)
{
    if (isLoose()) {
        for (const int row : rows)
            m_order.insert(placeFor(m_order, row), row);
        return settle();
    }
    const auto before = [this](int one, int other) { return isBefore(one, other); };
    std::sort(rows.begin(), rows.end(), before);
    std::vector<int> all;
    all.reserve(m_order.size() + rows.size());
    std::merge(m_order.begin(), m_order.end(), rows.cbegin(), rows.cend(), std::back_inserter(all),
               before);
    m_order.assign(all);
    settle();
}

void SortedProxy::rowsGo(const QModelIndex &parent, int first, int last)
{
    if (parent.isValid())
        return;
    ++m_serial;
    const bool wasInStep = isInStep();
    m_doomed = {first, last};
    m_doomedCount = m_source->rowCount();
    if (!m_isBuilt)
        return;
    if (!wasInStep)
        return startOver();
    const std::vector<Run> runs = m_brackets > 0 ? std::vector<Run>() : runsOf(first, last);
    dropRange(m_order, first, last);
    if (m_brackets > 0)
        return loseRows(first, last);
    if (m_isStale || runs.size() > MostRuns)
        return settle();
    const unsigned serial = m_serial;
    hide(runs);
    if (serial != m_serial)
        settle();
}

/// Rows that go where nobody may be told of it just now.
void SortedProxy::loseRows(int first, int last)
{
    const auto lose = [=](int row) { return row >= first && row <= last ? -1 : row; };
    m_shown.replaceEach(lose);
    replaceEach(m_coming, lose);
    m_isStale = true;
}

void SortedProxy::renumber(int from, int by)
{
    const auto shift = [=](int row) { return row >= from ? row + by : row; };
    m_order.replaceEach(shift);
    m_shown.replaceEach(shift);
    replaceEach(m_coming, shift);
}

void SortedProxy::rowsGone(const QModelIndex &parent, int first, int last)
{
    if (parent.isValid())
        return;
    ++m_serial;
    const Run doomed = std::exchange(m_doomed, {0, -1});
    if (!m_isBuilt) {
        noteAll(m_source);
        return;
    }
    const int count = last - first + 1;
    if (m_layouts > 0 || m_resets > 0 || doomed.first != first || doomed.last != last
        || m_count - count != m_source->rowCount())
        return startOver();
    m_count -= count;
    noteRemoved(first, last);
    renumber(last + 1, -count);
    if (m_isStale)
        rechoose();
}

void SortedProxy::rowsChanged(const QModelIndex &first, const QModelIndex &last,
                              const QVector<int> &roles)
{
    if (!first.isValid() || !last.isValid() || first.parent().isValid())
        return;
    const bool isNew = matters(roles);
    if (m_layouts > 0 || m_resets > 0)
        return; // their end looks at all rows
    if (!m_isBuilt) {
        if (isNew)
            noteChanged(first.row(), last.row());
        return;
    }
    if (!isInStep())
        return startOver();
    const unsigned serial = m_serial;
    if (isNew) {
        noteChanged(first.row(), last.row());
        takeUpChange(first.row(), last.row());
    }
    // Rows may have other numbers by now.
    if (isNew && serial + 1 != m_serial)
        passOn(0, m_count - 1, roles);
    else
        passOn(first.row(), last.row(), roles);
}

void SortedProxy::takeUpChange(int first, int last)
{
    if (m_isStale || !isSteady())
        return rechoose();
    if (isLoose()) {
        const std::vector<int> old = m_order.toVector();
        std::vector<int> left;
        std::copy_if(old.cbegin(), old.cend(), std::back_inserter(left),
                     [=](int row) { return row < first || row > last || belongs(row); });
        m_order.assign(left);
        for (int row = first; row <= last; ++row) {
            const bool isThere = std::find(old.cbegin(), old.cend(), row) != old.cend();
            if (!isThere && !isDoomed(row) && belongs(row))
                m_order.insert(placeFor(m_order, row), row);
        }
        return settle();
    }
    dropRange(m_order, first, last);
    std::vector<int> rows;
    for (int row = first; row <= last; ++row) {
        if (!isDoomed(row) && belongs(row))
            rows.push_back(row);
    }
    takeUp(std::move(rows));
}

void SortedProxy::passOn(int first, int last, const QVector<int> &roles)
{
    const QScopedValueRollback<int> changing(m_changes, m_changes + 1);
    const int column = columnCount() - 1;
    const unsigned serial = m_serial;
    std::vector<Run> runs = runsOf(first, last);
    if (runs.size() > MostRuns)
        runs = {{runs.front().first, runs.back().last}};
    for (const Run &run : runs) {
        Q_EMIT dataChanged(createIndex(run.first, 0), createIndex(run.last, column), roles);
        if (serial == m_serial)
            continue;
        // Whoever heard of it has moved rows: which of them are left to tell of, nobody knows.
        if (!m_shown.empty())
            Q_EMIT dataChanged(createIndex(0, 0), createIndex(int(m_shown.size()) - 1, column),
                               roles);
        return;
    }
}

void SortedProxy::refind()
{
    if (m_isBuilt)
        settle();
}

void SortedProxy::rechoose()
{
    m_isStale = true;
    catchUp();
    // Not yet: what is read of a row until then may be of another one.
    m_isLost = m_isLost || (m_isStale && !isInStep());
}

/// Does what could not be done before.
void SortedProxy::catchUp()
{
    if (m_mustReset && m_brackets == 0 && m_layouts == 0 && m_resets == 0)
        return startOver();
    if (!m_isStale || !isSteady())
        return;
    if (std::exchange(m_isLost, false))
        noteAll(m_source);
    m_isStale = false;
    m_isBuilt = true;
    m_order.assign(ordered());
    settle();
}

void SortedProxy::layoutBegins()
{
    if (m_layouts++ > 0)
        return;
    m_isAnnounced = m_brackets == 0;
    if (!m_isAnnounced)
        return;
    Q_EMIT layoutAboutToBeChanged();
    m_places = persistentIndexList();
    for (const QModelIndex &place : qAsConst(m_places))
        m_rowsThere.append(mapToSource(place));
}

void SortedProxy::layoutEnds()
{
    if (m_layouts == 0)
        layoutBegins(); // a source that does not say so beforehand
    if (--m_layouts > 0)
        return;
    ++m_serial;
    m_doomed = {0, -1};
    noteAll(m_source);
    if (!m_isAnnounced)
        return startOver();
    m_isStale = false;
    m_isLost = false;
    m_mustReset = false;
    if (m_isBuilt) {
        m_order.assign(ordered());
        m_shown.assign(found());
    }
    std::vector<int> rows;
    for (const QPersistentModelIndex &row : qAsConst(m_rowsThere))
        rows.push_back(row.isValid() && !row.parent().isValid() ? row.row() : -1);
    m_rowsThere.clear();
    tellLayout(std::exchange(m_places, {}), rows);
}

} // namespace Trivex
