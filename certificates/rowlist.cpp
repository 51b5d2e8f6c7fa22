// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "certificates/rowlist.h"

namespace Trivex {

int RowList::operator[](size_t place) const
{
    const size_t block = blockAt(place);
    return m_blocks[block][place - m_starts[block]];
}

/// The block of a place; the last one for the end. There has to be one.
size_t RowList::blockAt(size_t place) const
{
    const auto after = std::upper_bound(m_starts.cbegin(), m_starts.cend(), place);
    return size_t(after - m_starts.cbegin()) - 1;
}

void RowList::assign(const std::vector<int> &rows)
{
    m_blocks.clear();
    if (!rows.empty()) {
        m_blocks.push_back(rows);
        cut(0);
    }
    countFrom(0);
}

void RowList::insert(size_t place, int row)
{
    insert(place, &row, &row + 1);
}

void RowList::insert(size_t place, const std::vector<int> &rows)
{
    if (!rows.empty())
        insert(place, rows.data(), rows.data() + rows.size());
}

void RowList::insert(size_t place, const int *begin, const int *end)
{
    if (m_blocks.empty())
        return assign({begin, end});
    const size_t number = blockAt(place);
    Block &block = m_blocks[number];
    block.insert(block.begin() + std::ptrdiff_t(place - m_starts[number]), begin, end);
    cut(number);
    countFrom(number);
}

void RowList::erase(size_t first, size_t end)
{
    if (first >= end)
        return;
    const size_t from = blockAt(first);
    const size_t to = blockAt(end - 1);
    for (size_t number = from; number <= to; ++number) {
        const size_t start = m_starts[number];
        Block &block = m_blocks[number];
        const size_t firstHere = std::max(first, start) - start;
        const size_t endHere = std::min(end - start, block.size());
        block.erase(block.begin() + std::ptrdiff_t(firstHere),
                    block.begin() + std::ptrdiff_t(endHere));
    }
    tidy(from, to + 1);
}

/// Makes several of a block that is too long.
void RowList::cut(size_t block)
{
    if (m_blocks[block].size() <= MostInBlock)
        return;
    const Block rows = std::move(m_blocks[block]);
    const size_t count = rows.size() / Usual;
    std::vector<Block> pieces;
    for (size_t piece = 0; piece < count; ++piece)
        pieces.emplace_back(rows.begin() + std::ptrdiff_t(piece * rows.size() / count),
                            rows.begin() + std::ptrdiff_t((piece + 1) * rows.size() / count));
    m_blocks[block] = std::move(pieces.front());
    m_blocks.insert(m_blocks.begin() + std::ptrdiff_t(block) + 1,
                    std::make_move_iterator(pieces.begin() + 1),
                    std::make_move_iterator(pieces.end()));
}

/// Joins the small ones of these blocks with what stands before or behind them.
void RowList::tidy(size_t first, size_t end)
{
    size_t kept = first == 0 ? 0 : first - 1;
    const size_t from = kept;
    end = std::min(end + 1, m_blocks.size());
    for (size_t number = kept; number < end; ++number) {
        Block &block = m_blocks[number];
        if (kept > from && m_blocks[kept - 1].size() + block.size() <= Usual) {
            Block &before = m_blocks[kept - 1];
            before.insert(before.end(), block.cbegin(), block.cend());
        } else if (!block.empty()) {
            if (kept != number)
                m_blocks[kept] = std::move(block);
            ++kept;
        }
    }
    m_blocks.erase(m_blocks.begin() + std::ptrdiff_t(kept), m_blocks.begin() + std::ptrdiff_t(end));
    countFrom(from);
}

void RowList::countFrom(size_t block)
{
    m_starts.resize(m_blocks.size());
    size_t start = block == 0 ? 0 : m_starts[block - 1] + m_blocks[block - 1].size();
    for (; block < m_blocks.size(); ++block) {
        m_starts[block] = start;
        start += m_blocks[block].size();
    }
    m_size = start;
}

} // namespace Trivex
