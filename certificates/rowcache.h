// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QCollator>
#include <QString>

#include <optional>
#include <vector>

namespace Trivex {

/// What a filter has found out about one row of its source. Everything is found out once, when it
/// is first needed.
struct CachedRow {
    enum Fact : quint16 {
        TypeKnown = 0x001,
        EntryKnown = 0x002, ///< the three facts that follow
        HasEntry = 0x004,
        UserStore = 0x008,
        KeyBundle = 0x010,
        OriginKnown = 0x020, ///< the two facts that follow
        PrivateKey = 0x040,
        Root = 0x080,
        Accepted = 0x100, ///< has passed the category test
        Tested = 0x200, ///< `Matched` is true for the current search text
        Matched = 0x400,
        HaystackKnown = 0x800,
    };

    bool has(Fact fact) const { return facts & fact; }
    void set(Fact fact, bool on = true)
    {
        facts = on ? quint16(facts | fact) : quint16(facts & ~fact);
    }

    int type = 0;
    quint16 facts = 0;
    QString haystack; ///< the searched texts, folded, joined by `RowCache::separator`
    std::optional<QCollatorSortKey> sortKey; ///< to sort by
    QString name; ///< to sort by where sort keys don't serve
};

/// The facts by source row; follows the source's rows as they come, go and move. Removing a row
/// forgets what was known of it, a new row is unknown.
class RowCache {
public:
    /// In no text that can be searched for; see `CertificateModel`.
    static constexpr QChar separator = QChar(0xFFFF);

    /// The facts of `row`; the reference holds until rows come or go.
    CachedRow &at(int row);
    /// Of the rows that were asked for so far.
    std::vector<CachedRow> &rows() { return m_rows; }

    void insert(int first, int last);
    void remove(int first, int last);
    /// To before row `destination`, which is outside `first` to `last` + 1.
    void move(int first, int last, int destination);
    /// Forgets what was known of these rows.
    void forget(int first, int last);
    void clear();

private:
    std::vector<CachedRow> m_rows;
};

} // namespace Trivex
