// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
// How a `SortedProxy` takes up the changes of its source and of what is found, and passes them on.
#include "certificates/sortedproxy.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace Trivex {

namespace {

/// Above this number of runs that come and go, views get one new layout.
constexpr size_t MostRuns = 64;
/// Rows that come in larger numbers are merged with the others, not inserted one by one.
constexpr size_t OneByOne = 64;

void dropRange(std::vector<int> &rows, int first, int last)
{
    const auto isGone = [first, last](int row) { return row >= first && row <= last; };
    rows.erase(std::remove_if(rows.begin(), rows.end(), isGone), rows.end());
}

void shift(std::vector<int> &rows, int from, int by)
{
    for (int &row : rows)
        row += row >= from ? by : 0;
}

} // namespace

void SortedProxy::rowsCame(const QModelIndex &parent, int first, int last)
{
    if (parent.isValid())
        return;
    noteInserted(first, last);
    if (!m_isBuilt) {
        rechoose();
        return;
    }
    if (last + 1 < m_source->rowCount()) {
        shift(m_order, first, last - first + 1);
        shift(m_shown, first, last - first + 1);
    }
    std::vector<int> rows;
    for (int row = first; row <= last; ++row) {
        if (belongs(row))
            rows.push_back(row);
    }
    if (rows.size() > OneByOne) {
        takeUp(std::move(rows));
        return;
    }
    const unsigned serial = ++m_serial;
    for (const int row : rows) {
        takeUp(row);
        if (serial != m_serial)
            return rechoose();
    }
}

void SortedProxy::takeUp(int row)
{
    const auto before = [this](int one, int other) { return isBefore(one, other); };
    m_order.insert(std::upper_bound(m_order.begin(), m_order.end(), row, before), row);
    if (!isFound(row))
        return;
    const auto place = std::upper_bound(m_shown.begin(), m_shown.end(), row, before);
    const int number = int(place - m_shown.begin());
    const QScopedValueRollback<int> changing(m_changes, m_changes + 1);
    beginInsertRows({}, number, number);
    m_shown.insert(place, row);
    endInsertRows();
}

void SortedProxy::takeUp(std::vector<int> rows)
{
    const auto before = [this](int one, int other) { return isBefore(one, other); };
    std::sort(rows.begin(), rows.end(), before);
    const auto old = std::ptrdiff_t(m_order.size());
    m_order.insert(m_order.end(), rows.cbegin(), rows.cend());
    std::inplace_merge(m_order.begin(), m_order.begin() + old, m_order.end(), before);
    show(found());
}

void SortedProxy::rowsGo(const QModelIndex &parent, int first, int last)
{
    if (parent.isValid() || !m_isBuilt)
        return;
    const std::vector<Run> runs = runsOf(first, last);
    dropRange(m_order, first, last);
    if (runs.size() <= MostRuns) {
        hide(runs);
        return;
    }
    std::vector<int> fresh = m_shown;
    dropRange(fresh, first, last);
    layAnew(std::move(fresh));
}

void SortedProxy::rowsGone(const QModelIndex &parent, int first, int last)
{
    if (parent.isValid())
        return;
    noteRemoved(first, last);
    shift(m_order, last + 1, first - last - 1);
    shift(m_shown, last + 1, first - last - 1);
}

void SortedProxy::rowsChanged(const QModelIndex &first, const QModelIndex &last,
                              const QVector<int> &roles)
{
    if (!first.isValid() || !last.isValid() || first.parent().isValid())
        return;
    const bool isNew = matters(roles);
    if (!m_isBuilt) {
        if (isNew)
            noteChanged(first.row(), last.row());
        return;
    }
    if (isNew)
        takeUpChange(first.row(), last.row());
    passOn(first.row(), last.row(), roles);
}

void SortedProxy::takeUpChange(int first, int last)
{
    dropRange(m_order, first, last);
    noteChanged(first, last);
    const auto before = [this](int one, int other) { return isBefore(one, other); };
    const auto old = std::ptrdiff_t(m_order.size());
    for (int row = first; row <= last; ++row) {
        if (belongs(row))
            m_order.push_back(row);
    }
    std::sort(m_order.begin() + old, m_order.end(), before);
    std::inplace_merge(m_order.begin(), m_order.begin() + old, m_order.end(), before);
    show(found());
}

void SortedProxy::passOn(int first, int last, const QVector<int> &roles)
{
    const int column = columnCount() - 1;
    const unsigned serial = ++m_serial;
    std::vector<Run> runs = runsOf(first, last);
    if (runs.size() > MostRuns)
        runs = {{runs.front().first, runs.back().last}};
    for (const Run &run : runs) {
        Q_EMIT dataChanged(createIndex(run.first, 0), createIndex(run.last, column), roles);
        if (serial != m_serial)
            return;
    }
}

void SortedProxy::refind()
{
    if (m_isBuilt)
        show(found());
}

void SortedProxy::rechoose()
{
    m_isBuilt = true;
    m_order = ordered();
    show(found());
}

void SortedProxy::layoutBegins()
{
    if (m_layouts++ > 0)
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
    if (m_layouts > 1) {
        --m_layouts;
        return;
    }
    ++m_serial;
    noteAll(m_source);
    if (m_isBuilt) {
        m_order = ordered();
        m_shown = found();
    }
    QModelIndexList now;
    for (const QPersistentModelIndex &row : qAsConst(m_rowsThere))
        now.append(mapFromSource(row));
    changePersistentIndexList(m_places, now);
    m_places.clear();
    m_rowsThere.clear();
    Q_EMIT layoutChanged();
    --m_layouts;
}

std::vector<SortedProxy::Run> SortedProxy::runsOf(int first, int last) const
{
    std::vector<Run> runs;
    if (first == last) {
        const auto place =
            std::lower_bound(m_shown.cbegin(), m_shown.cend(), first,
                             [this](int one, int other) { return isBefore(one, other); });
        if (place != m_shown.cend() && *place == first)
            runs.push_back({int(place - m_shown.cbegin()), int(place - m_shown.cbegin())});
        return runs;
    }
    for (int place = 0; place < int(m_shown.size()); ++place) {
        const int row = m_shown[size_t(place)];
        if (row < first || row > last)
            continue;
        if (!runs.empty() && runs.back().last == place - 1)
            runs.back().last = place;
        else
            runs.push_back({place, place});
    }
    return runs;
}

std::vector<SortedProxy::Run> SortedProxy::runsNotIn(const std::vector<int> &rows,
                                                     const std::vector<int> &others) const
{
    std::vector<bool> isOther(size_t(m_source ? m_source->rowCount() : 0));
    for (const int row : others)
        isOther[size_t(row)] = true;
    std::vector<Run> runs;
    for (int place = 0; place < int(rows.size()); ++place) {
        if (isOther[size_t(rows[size_t(place)])])
            continue;
        if (!runs.empty() && runs.back().last == place - 1)
            runs.back().last = place;
        else
            runs.push_back({place, place});
    }
    return runs;
}

/// Whether the rows that stay, stay in their order.
bool SortedProxy::keepsOrder(const std::vector<int> &fresh) const
{
    std::vector<int> places(size_t(m_source ? m_source->rowCount() : 0), -1);
    for (size_t place = 0; place < fresh.size(); ++place)
        places[size_t(fresh[place])] = int(place);
    int last = -1;
    for (const int row : m_shown) {
        const int place = places[size_t(row)];
        if (place < 0)
            continue;
        if (place < last)
            return false;
        last = place;
    }
    return true;
}

void SortedProxy::show(std::vector<int> fresh)
{
    const std::vector<Run> gone = runsNotIn(m_shown, fresh);
    const std::vector<Run> come = runsNotIn(fresh, m_shown);
    if (gone.size() + come.size() > MostRuns || !keepsOrder(fresh)) {
        layAnew(std::move(fresh));
        return;
    }
    const unsigned serial = ++m_serial;
    hide(gone);
    for (const Run &run : come) {
        if (serial != m_serial)
            return;
        const QScopedValueRollback<int> changing(m_changes, m_changes + 1);
        beginInsertRows({}, run.first, run.last);
        m_shown.insert(m_shown.begin() + run.first, fresh.cbegin() + run.first,
                       fresh.cbegin() + run.last + 1);
        endInsertRows();
    }
}

void SortedProxy::hide(const std::vector<Run> &runs)
{
    const unsigned serial = m_serial;
    // From the back, so that the places before stay what they are.
    for (auto run = runs.crbegin(); run != runs.crend() && serial == m_serial; ++run) {
        const QScopedValueRollback<int> changing(m_changes, m_changes + 1);
        beginRemoveRows({}, run->first, run->last);
        m_shown.erase(m_shown.begin() + run->first, m_shown.begin() + run->last + 1);
        endRemoveRows();
    }
}

void SortedProxy::layAnew(std::vector<int> fresh)
{
    ++m_serial;
    const QScopedValueRollback<int> laying(m_layouts, m_layouts + 1);
    const QScopedValueRollback<int> changing(m_changes, m_changes + 1);
    Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList places = persistentIndexList();
    std::vector<int> rows;
    for (const QModelIndex &place : places)
        rows.push_back(m_shown[size_t(place.row())]);
    m_shown = std::move(fresh);
    QModelIndexList now;
    for (int i = 0; i < places.size(); ++i) {
        const std::vector<Run> run = runsOf(rows[size_t(i)], rows[size_t(i)]);
        now.append(run.empty() ? QModelIndex()
                               : createIndex(run.front().first, places.at(i).column()));
    }
    changePersistentIndexList(places, now);
    Q_EMIT layoutChanged();
}

} // namespace Trivex
