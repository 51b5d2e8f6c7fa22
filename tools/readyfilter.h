// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/entrymodel.h"
#include "tools/validity.h"

namespace Trivex {

/// A choice of rows that a list offers ready-made, on top of what is looked for in it.
struct ReadyFilter {
    /// A `Validity::State` that the rows have to be in; `Unknown` for any.
    int validity = Validity::Unknown;
    bool onlyWithKeys = false;
    /// The id of the store that the rows have to be in; empty for any.
    QString storeId;

    bool operator==(const ReadyFilter &other) const
    {
        return validity == other.validity && onlyWithKeys == other.onlyWithKeys
            && storeId == other.storeId;
    }
    bool wants(const EntryModel &entries, int row) const;
};

} // namespace Trivex
