// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/rowcache.h"

#include <algorithm>

namespace Trivex {

/// Grows by an eighth: each of several filters has a place for every row of a long list, and twice
/// as many as there are rows are not needed.
void RowCache::makeRoomFor(size_t rows)
{
    if (rows > m_rows.capacity())
        m_rows.reserve(rows + rows / 8);
}

CachedRow &RowCache::at(int row)
{
    const auto position = size_t(row);
    if (position >= m_rows.size()) {
        makeRoomFor(position + 1);
        m_rows.resize(position + 1);
    }
    return m_rows[position];
}

void RowCache::insert(int first, int last)
{
    const auto place = size_t(first);
    // Rows past the end are created when they are asked for.
    if (place >= m_rows.size())
        return;
    const size_t count = size_t(last) - place + 1;
    makeRoomFor(m_rows.size() + count);
    m_rows.resize(m_rows.size() + count);
    std::rotate(m_rows.begin() + first, m_rows.end() - std::ptrdiff_t(count), m_rows.end());
}

void RowCache::remove(int first, int last)
{
    const int end = std::min(last + 1, int(m_rows.size()));
    if (first < end)
        m_rows.erase(m_rows.begin() + first, m_rows.begin() + end);
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
