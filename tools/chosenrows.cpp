// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/chosenrows.h"

#include <algorithm>

namespace Trivex {

QVector<int> ChosenRows::all() const
{
    QVector<int> rows;
    rows.reserve(m_count);
    for (int row = 0; row < m_marks.size(); ++row) {
        if (m_marks.at(row))
            rows.append(row);
    }
    return rows;
}

void ChosenRows::clear()
{
    m_marks.clear();
    m_count = 0;
    m_absent.clear();
}

void ChosenRows::choose(int count, int first, int last)
{
    m_absent.clear();
    m_marks.fill(false, count);
    std::fill(m_marks.begin() + first, m_marks.begin() + last + 1, true);
    m_count = last - first + 1;
}

void ChosenRows::add(int count, int row)
{
    m_marks.resize(count);
    m_count += m_marks.at(row) ? 0 : 1;
    m_marks[row] = true;
}

void ChosenRows::take(int row)
{
    if (!isAt(row))
        return;
    m_marks[row] = false;
    --m_count;
}

void ChosenRows::noteInserted(int first, int last, const Reader &read)
{
    if (!isActive())
        return;
    m_marks.resize(std::max(m_marks.size(), first));
    m_marks.insert(first, last - first + 1, false);
    for (int row = first; row <= last && !m_absent.isEmpty(); ++row) {
        if (!takeAbsent(read(row)))
            continue;
        m_marks[row] = true;
        ++m_count;
    }
}

void ChosenRows::noteGoing(int first, int last, const Reader &read)
{
    for (int row = first; row <= last && m_count > 0; ++row) {
        if (!isAt(row))
            continue;
        const KnownRow known = read(row);
        m_absent.insert(known.identity, known.certificate);
        take(row);
    }
}

void ChosenRows::noteRemoved(int first, int last)
{
    const int end = std::min(last + 1, m_marks.size());
    if (first < end)
        m_marks.remove(first, end - first);
}

/// Whether the row was chosen when it went.
bool ChosenRows::takeAbsent(const KnownRow &row)
{
    for (auto one = m_absent.find(row.identity); one != m_absent.end() && one.key() == row.identity;
         ++one) {
        if (*one && *one != row.certificate)
            continue;
        m_absent.erase(one);
        return true;
    }
    return false;
}

} // namespace Trivex
