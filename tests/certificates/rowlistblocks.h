// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "certificates/rowlist.h"

namespace Trivex {

/// How a list is cut into blocks: what one row that comes or goes moves is bounded by these two.
struct RowListBlocks {
    static size_t count(const RowList &list) { return list.m_blocks.size(); }
    static size_t longest(const RowList &list)
    {
        size_t longest = 0;
        for (const auto &block : list.m_blocks)
            longest = std::max(longest, block.size());
        return longest;
    }
};

} // namespace Trivex
