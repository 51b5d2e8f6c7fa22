// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QCollator>
#include <QString>

#include <memory>
#include <variant>
#include <vector>

namespace Trivex {

/// The facts that a filter knows about one row of its source. Each is computed once, when it is
/// first needed.
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
        Before = 0x100, ///< was shown before the search that is going on
        Tested = 0x200, ///< `Matched` is true for the current search text
        Matched = 0x400,
        HaystackKnown = 0x800,
        Waiting = 0x1000, ///< is to be tested by the search that is going on
    };

    /// Most rows are in another category than the filter's, and have none.
    struct Texts {
        QString haystack; ///< the searched texts, folded, joined by `RowCache::Separator`
        /// What to sort by: the key of the name, or itself where keys don't serve.
        std::variant<std::monostate, QCollatorSortKey, QString> name;
    };

    bool has(Fact fact) const { return facts & fact; }
    void set(Fact fact, bool on = true)
    {
        facts = on ? quint16(facts | fact) : quint16(facts & ~fact);
    }
    Texts &keptTexts()
    {
        if (!texts)
            texts = std::make_unique<Texts>();
        return *texts;
    }

    std::unique_ptr<Texts> texts;
    int type = 0;
    quint16 facts = 0;
};

/// The facts by source row; follows insertions and removals in the source. Removing a row forgets
/// its facts; nothing is known of a new row.
class RowCache {
public:
    /// A character that no search text can contain; see `CertificateModel`.
    static constexpr QChar Separator = QChar(0xFFFF);

    /// The facts of `row`; the reference is valid until rows are inserted or removed.
    CachedRow &at(int row);
    /// The number of rows that were asked for so far.
    std::vector<CachedRow> &rows() { return m_rows; }

    void insert(int first, int last);
    void remove(int first, int last);
    /// Forgets the facts of these rows.
    void forget(int first, int last);
    void clear();

private:
    void makeRoomFor(size_t rows);

    std::vector<CachedRow> m_rows;
};

} // namespace Trivex
