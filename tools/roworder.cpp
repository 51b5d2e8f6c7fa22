// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/roworder.h"

#include "tools/rows.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace Trivex {

namespace {

constexpr qint64 Last = std::numeric_limits<qint64>::max();

QVector<qint64> placesByEnd(const EntryModel &entries, const QVector<int> &rows)
{
    QVector<qint64> places;
    places.reserve(rows.size());
    for (const int row : rows) {
        const QDateTime end = entries.index(row, 0).data(EntryModel::UntilRole).toDateTime();
        places.append(end.isValid() ? end.toMSecsSinceEpoch() : Last);
    }
    return places;
}

/// Turns rows in the order of their names round; those of one name stay as they were.
void turnByName(const EntryModel &entries, QVector<int> &rows)
{
    const int role = roleNamed(entries, QStringLiteral("name"));
    const auto nameOf = [&](int row) {
        return entries.index(row, 0).data(role).toString().toLower();
    };
    std::reverse(rows.begin(), rows.end());
    for (auto first = rows.begin(); first != rows.end();) {
        const QString name = nameOf(*first);
        const auto last =
            std::find_if(first + 1, rows.end(), [&](int row) { return nameOf(row) != name; });
        std::reverse(first, last);
        first = last;
    }
}

} // namespace

bool RowOrder::set(Key key, bool descending)
{
    if (key == m_key && descending == m_descending)
        return false;
    if (key != m_key)
        m_ranks.clear();
    m_key = key;
    m_descending = descending;
    return true;
}

void RowOrder::sort(const EntryModel &entries, QVector<int> &rows, bool named)
{
    if (m_key == Place)
        return;
    if (m_key == Given || (m_key == Name && named)) {
        if (m_descending && m_key == Name)
            turnByName(entries, rows);
        else if (m_descending)
            std::reverse(rows.begin(), rows.end());
        return;
    }
    const QVector<qint64> places =
        m_key == Until ? placesByEnd(entries, rows) : placesByText(entries, rows);
    QVector<int> order(rows.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int first, int second) {
        const qint64 one = places.at(first);
        const qint64 other = places.at(second);
        // What has no end is last both ways.
        if (!m_descending || one == Last || other == Last)
            return one < other;
        return one > other;
    });
    QVector<int> sorted;
    sorted.reserve(rows.size());
    for (const int index : qAsConst(order))
        sorted.append(rows.at(index));
    rows = sorted;
}

QStringList RowOrder::sortedPlaces(QStringList places) const
{
    if (m_key != Place)
        return places;
    // Where the locale has no order of its own, capitals would come before all small letters.
    std::stable_sort(places.begin(), places.end(), [](const QString &first, const QString &second) {
        return QString::localeAwareCompare(first.toCaseFolded(), second.toCaseFolded()) < 0;
    });
    if (m_descending)
        std::reverse(places.begin(), places.end());
    return places;
}

QVector<qint64> RowOrder::placesByText(const EntryModel &entries, const QVector<int> &rows)
{
    const int role =
        roleNamed(entries, m_key == Issuer ? QStringLiteral("issuer") : QStringLiteral("name"));
    QStringList texts;
    texts.reserve(rows.size());
    for (const int row : rows)
        texts.append(entries.index(row, 0).data(role).toString());
    rank(texts);
    QVector<qint64> places;
    places.reserve(rows.size());
    for (const QString &text : qAsConst(texts))
        places.append(m_ranks.value(text));
    return places;
}

void RowOrder::rank(const QStringList &texts)
{
    const bool known = std::all_of(texts.cbegin(), texts.cend(),
                                   [this](const QString &text) { return m_ranks.contains(text); });
    if (known)
        return;
    m_ranks.clear();
    for (const QString &text : texts)
        m_ranks.insert(text, 0);
    QStringList distinct = m_ranks.keys();
    std::sort(distinct.begin(), distinct.end(), [](const QString &first, const QString &second) {
        return QString::localeAwareCompare(first, second) < 0;
    });
    for (int i = 0; i < distinct.size(); ++i)
        m_ranks.insert(distinct.at(i), i);
}

} // namespace Trivex
