// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

namespace Trivex {

/// Numbers of rows in an order, in blocks of some hundreds: a row that comes or goes in the middle
/// of 50,000 moves those of its block, not all that follow.
///
/// It reads as a vector does. Places are between 0 and `size()`; a place that is not there must not
/// be asked for. An iterator is valid until the list changes.
class RowList {
    using Block = std::vector<int>;

public:
    /// No block is longer.
    static constexpr size_t MostInBlock = 512;

    class Iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = int;
        using difference_type = std::ptrdiff_t;
        using pointer = const int *;
        using reference = const int &;

        Iterator() = default;
        reference operator*() const { return (*m_block)[m_offset]; }
        Iterator &operator++()
        {
            if (++m_offset == m_block->size()) {
                ++m_block;
                m_offset = 0;
            }
            return *this;
        }
        Iterator operator++(int)
        {
            const Iterator old = *this;
            ++*this;
            return old;
        }
        bool operator==(const Iterator &other) const
        {
            return m_block == other.m_block && m_offset == other.m_offset;
        }
        bool operator!=(const Iterator &other) const { return !(*this == other); }

    private:
        friend class RowList;
        explicit Iterator(const Block *block)
            : m_block(block)
        {
        }

        const Block *m_block = nullptr;
        size_t m_offset = 0;
    };
    using value_type = int;

    RowList() = default;

    size_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }
    int operator[](size_t place) const;
    Iterator begin() const { return Iterator(m_blocks.data()); }
    Iterator end() const { return Iterator(m_blocks.data() + m_blocks.size()); }
    std::vector<int> toVector() const { return {begin(), end()}; }

    void clear() { assign({}); }
    void assign(const std::vector<int> &rows);
    /// The first of `rows` is at `place` afterwards, which may be the end.
    void insert(size_t place, const std::vector<int> &rows);
    void insert(size_t place, int row);
    /// Takes out the places from `first` to before `end`.
    void erase(size_t first, size_t end);
    /// Takes out the rows for which `isGone(row)`, which must not read this list.
    template <typename IsGone> void eraseIf(IsGone isGone)
    {
        for (Block &block : m_blocks)
            block.erase(std::remove_if(block.begin(), block.end(), isGone), block.end());
        tidy(0, m_blocks.size());
    }
    /// Each row becomes `change(row)`, which must not read this list.
    template <typename Change> void replaceEach(Change change)
    {
        for (Block &block : m_blocks)
            std::transform(block.begin(), block.end(), block.begin(), change);
    }

    /// The first place with a row that does not come before `row`, in a list in that order.
    template <typename IsBefore> size_t lowerBound(int row, IsBefore isBefore) const
    {
        return firstPlace([&](int other) { return !isBefore(other, row); });
    }
    /// The first place with a row that comes after `row`, in a list in that order.
    template <typename IsBefore> size_t upperBound(int row, IsBefore isBefore) const
    {
        return firstPlace([&](int other) { return isBefore(row, other); });
    }

private:
    friend struct RowListBlocks; // of the tests
    /// Where a block is cut: half full, so that the next rows find room on either side.
    static constexpr size_t Usual = MostInBlock / 2;

    /// The first place from which on `isOne(row)`; there is none before it.
    template <typename IsOne> size_t firstPlace(IsOne isOne) const
    {
        const auto isPast = [&](int row) { return !isOne(row); };
        const auto after =
            std::partition_point(m_blocks.cbegin(), m_blocks.cend(),
                                 [&](const Block &block) { return isPast(block.front()); });
        if (after == m_blocks.cbegin())
            return 0;
        const auto block = std::prev(after);
        const auto row = std::partition_point(block->cbegin(), block->cend(), isPast);
        return m_starts[size_t(block - m_blocks.cbegin())] + size_t(row - block->cbegin());
    }
    size_t blockAt(size_t place) const;
    void insert(size_t place, const int *begin, const int *end);
    void cut(size_t block);
    void tidy(size_t first, size_t end);
    void countFrom(size_t block);

    std::vector<Block>
        m_blocks; ///< none is empty, and no two neighbours would fit into half of one
    std::vector<size_t> m_starts; ///< the place of the first row of each
    size_t m_size = 0;
};

} // namespace Trivex
