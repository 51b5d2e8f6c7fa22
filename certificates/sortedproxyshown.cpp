// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
// How a `SortedProxy` brings what is shown to what is found, and tells of it.
#include "certificates/sortedproxy.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace Trivex {

namespace {

/// The places in `rows` of those for which `isOne(row)`.
template <typename Runs, typename Rows, typename IsOne> Runs placesOf(const Rows &rows, IsOne isOne)
{
    Runs runs;
    int place = -1;
    for (const int row : rows) {
        ++place;
        if (!isOne(row))
            continue;
        if (!runs.empty() && runs.back().last == place - 1)
            runs.back().last = place;
        else
            runs.push_back({place, place});
    }
    return runs;
}

/// The size of a table by row for these rows.
template <typename Rows, typename Others> size_t sizeFor(const Rows &rows, const Others &others)
{
    int most = -1;
    for (const int row : rows)
        most = std::max(most, row);
    for (const int row : others)
        most = std::max(most, row);
    return size_t(most + 1);
}

/// Says of one of `others` whether it is not among `rows`; -1 never is.
class NotIn {
public:
    template <typename Rows, typename Others>
    NotIn(const Rows &rows, const Others &others)
        : m_isThere(sizeFor(rows, others))
    {
        for (const int row : rows) {
            if (row >= 0)
                m_isThere[size_t(row)] = true;
        }
    }
    bool operator()(int row) const { return row < 0 || !m_isThere[size_t(row)]; }

private:
    std::vector<bool> m_isThere;
};

/// Whether the rows that stay, stay in their order.
bool keepOrder(const RowList &old, const std::vector<int> &fresh)
{
    std::vector<int> places(sizeFor(old, fresh), -1);
    for (size_t place = 0; place < fresh.size(); ++place)
        places[size_t(fresh[place])] = int(place);
    int last = -1;
    for (const int row : old) {
        const int place = row < 0 ? -1 : places[size_t(row)];
        if (place < 0)
            continue;
        if (place < last)
            return false;
        last = place;
    }
    return true;
}

} // namespace

std::vector<SortedProxy::Run> SortedProxy::runsOf(int first, int last) const
{
    // In the middle of a change rows may stand where they don't belong.
    const bool isOrdered = !m_isStale && !isChanging() && !isLoose() && isInStep();
    if (first == last && isOrdered) {
        const size_t place =
            m_shown.lowerBound(first, [this](int one, int other) { return isBefore(one, other); });
        return place < m_shown.size() && m_shown[place] == first
            ? std::vector<Run>{{int(place), int(place)}}
            : std::vector<Run>();
    }
    return placesOf<std::vector<Run>>(m_shown,
                                      [=](int row) { return row >= first && row <= last; });
}

/// Brings what is shown to what is found.
void SortedProxy::settle()
{
    ++m_serial;
    if (!isSteady()) {
        m_isLost = m_isLost || !isInStep();
        m_isStale = true;
        return;
    }
    if (m_isStale)
        return catchUp();
    const std::vector<int> fresh = found();
    const std::vector<Run> gone = placesOf<std::vector<Run>>(m_shown, NotIn(fresh, m_shown));
    const std::vector<Run> come = placesOf<std::vector<Run>>(fresh, NotIn(m_shown, fresh));
    if (gone.size() + come.size() > MostRuns || !keepOrder(m_shown, fresh))
        return layAnew();
    const unsigned serial = m_serial;
    hide(gone);
    for (auto run = come.cbegin(); run != come.cend() && serial == m_serial; ++run)
        insertShown(run->first, {fresh.cbegin() + run->first, fresh.cbegin() + run->last + 1});
    if (serial != m_serial)
        refind();
}

void SortedProxy::hide(const std::vector<Run> &runs)
{
    const unsigned serial = m_serial;
    // From the back, so that the places before stay what they are.
    for (auto run = runs.crbegin(); run != runs.crend() && serial == m_serial; ++run)
        removeShown(*run);
}

void SortedProxy::removeShown(const Run &run)
{
    const QScopedValueRollback<int> changing(m_changes, m_changes + 1);
    ++m_brackets;
    beginRemoveRows({}, run.first, run.last);
    if (run.last < int(m_shown.size())) // they may all be forgotten by now
        m_shown.erase(size_t(run.first), size_t(run.last) + 1);
    --m_brackets;
    endRemoveRows();
    catchUp();
}

void SortedProxy::insertShown(int place, std::vector<int> rows)
{
    const QScopedValueRollback<int> changing(m_changes, m_changes + 1);
    const int last = place + int(rows.size()) - 1;
    ++m_brackets;
    m_coming = std::move(rows);
    beginInsertRows({}, place, last);
    if (place <= int(m_shown.size()))
        m_shown.insert(size_t(place), m_coming);
    m_coming.clear();
    --m_brackets;
    endInsertRows();
    catchUp();
}

void SortedProxy::layAnew()
{
    const QScopedValueRollback<int> changing(m_changes, m_changes + 1);
    ++m_brackets;
    Q_EMIT layoutAboutToBeChanged();
    --m_brackets;
    const QModelIndexList places = persistentIndexList();
    std::vector<int> rows;
    for (const QModelIndex &place : places)
        rows.push_back(place.row() < int(m_shown.size()) ? m_shown[size_t(place.row())] : -1);
    if (!m_mustReset) {
        if (m_isStale && isInStep()) {
            if (std::exchange(m_isLost, false))
                noteAll(m_source);
            m_isStale = false;
            m_order.assign(ordered());
        }
        if (!m_isStale)
            m_shown.assign(found());
    }
    tellLayout(places, rows);
    catchUp();
}

/// Ends a layout change; at `places` there were these rows.
void SortedProxy::tellLayout(const QModelIndexList &places, const std::vector<int> &rows)
{
    std::vector<int> now(sizeFor(m_shown, rows), -1);
    int number = 0;
    for (const int row : m_shown) {
        if (row >= 0)
            now[size_t(row)] = number;
        ++number;
    }
    QModelIndexList there;
    for (int i = 0; i < places.size(); ++i) {
        const int row = rows[size_t(i)];
        const int place = row < 0 ? -1 : now[size_t(row)];
        there.append(place < 0 ? QModelIndex() : createIndex(place, places.at(i).column()));
    }
    changePersistentIndexList(places, there);
    const QScopedValueRollback<int> changing(m_changes, m_changes + 1);
    m_isOwnLayout = true;
    Q_EMIT layoutChanged();
    m_isOwnLayout = false;
}

} // namespace Trivex
