// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/readyfilter.h"

namespace Trivex {

bool ReadyFilter::wants(const EntryModel &entries, int row) const
{
    const QModelIndex index = entries.index(row, 0);
    if (validity != Validity::Unknown
        && entries.data(index, EntryModel::ValidityRole).toInt() != validity)
        return false;
    if (onlyWithKeys && !entries.data(index, EntryModel::HasKeyRole).toBool())
        return false;
    return storeId.isEmpty() || entries.data(index, EntryModel::StoreIdRole).toString() == storeId;
}

} // namespace Trivex
