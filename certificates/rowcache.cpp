// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/rowcache.h"

#include <algorithm>

namespace Trivex {

CachedRow &RowCache::at(int row)
{
    const auto position = size_t(row);
    if (position >= m_rows.size())
        m_rows.resize(position + 1);
    return m_rows[position];
}

void RowCache::insert(int first, int last)
{
    // Rows past the end are created when they are asked for.
    if (size_t(first) < m_rows.size())
        m_rows.insert(m_rows.begin() + first, size_t(last) - size_t(first) + 1, CachedRow());
}

void RowCache::remove(int first, int last)
{
    const int end = std::min(last + 1, int(m_rows.size()));
    if (first < end)
        m_rows.erase(m_rows.begin() + first, m_rows.begin() + end);
}

void RowCache::move(int first, int last, int destination)
{
    at(std::max(last, destination - 1));
    const auto begin = m_rows.begin();
    if (destination > last)
        std::rotate(begin + first, begin + last + 1, begin + destination);
    else
        std::rotate(begin + destination, begin + first, begin + last + 1);
}

void RowCache::forget(int first, int last)
{
    const int end = std::min(last + 1, int(m_rows.size()));
    for (int row = first; row < end; ++row)
        m_rows[size_t(row)] = CachedRow();
}

void RowCache::clear()
{
    m_rows.clear();
}

} // namespace Trivex
