// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "certificates/rowcache.h"
#include "qca/base/entryrows.h"

#include <QAbstractItemModel>
#include <QVector>

class KeyStoreEntry;

namespace Trivex {

/// What the filter model knows of the rows of its source, read from it when it is first asked for
/// and kept until the source announces a change. GUI thread only.
class RowFacts {
public:
    /// The source's roles that are read of every row.
    enum Role {
        NameRole = Qt::UserRole + 1,
        KeyStoreEntryRole = Qt::UserRole + 2,
        TypeRole = Qt::UserRole + 5,
    };

    void setSource(const QAbstractItemModel *source) { m_source = source; }

    /// Whether the row is in the category `category`.
    bool isIn(int category, int row);
    /// Whether the searched texts of the row contain `needle`, which is folded.
    bool contains(int row, const QString &needle);
    /// The names of two rows as they are sorted: less than, equal to or greater than 0.
    int compare(int row, int other);

    /// The roles that are searched. Those read so far are forgotten where they are others.
    void setSearched(const QVector<int> &roles);
    const QVector<int> &searched() const { return m_searched; }

    CachedRow &at(int row) { return m_cache.at(row); }
    RowCache &cache() { return m_cache; }

private:
    QModelIndex index(int row) const { return m_source->index(row, 0); }
    bool isInEntryCategory(int category, int row, CachedRow &facts);
    void readEntry(int row, CachedRow &facts);
    void readOrigin(int row, CachedRow &facts);
    RowOrigin originOf(int row) const;
    const CachedRow::Texts &name(int row);
    QString readTexts(int row) const;
    const KeyStoreEntry *wrapper(int row) const;
    /// Null for a row without one.
    const QCA::KeyStoreEntry *entry(int row) const;

    const QAbstractItemModel *m_source = nullptr;
    RowCache m_cache;
    QVector<int> m_searched;
};

} // namespace Trivex
