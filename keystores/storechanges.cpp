// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "keystores/storechanges.h"

#include "qca/adapter/entries.h"

#include <vector>

namespace {

using Rows = std::vector<const KeyStoreItem *>;

bool isSame(const KeyStoreItem &row, const QCA::KeyStoreEntry &entry)
{
    // An entry that is listed again is mostly another object of the same id.
    return row.entry.context() == entry.context()
        || Trivex::entryId(row.entry) == Trivex::entryId(entry);
}

Rows rowsOf(const QList<KeyStoreItem> &items, const QCA::KeyStore *keyStore)
{
    Rows rows;
    for (const KeyStoreItem &item : items) {
        if (item.keyStore == keyStore)
            rows.push_back(&item);
    }
    return rows;
}

} // namespace

StoreChanges changesOf(const QList<KeyStoreItem> &items, const QCA::KeyStore *keyStore,
                       const QList<QCA::KeyStoreEntry> &entries)
{
    const Rows rows = rowsOf(items, keyStore);
    auto first = rows.cbegin();
    auto last = rows.cend();
    StoreChanges changes;
    changes.end = entries.size();
    while (first != last && changes.first < changes.end
           && isSame(**first, entries.at(changes.first)))
        ++first, ++changes.first;
    while (first != last && changes.first < changes.end
           && isSame(**(last - 1), entries.at(changes.end - 1)))
        --last, --changes.end;
    QSet<QString> listed;
    // Without rows nothing can be there twice but among the new ones themselves.
    for (int i = changes.first; i < changes.end && !rows.empty(); ++i)
        listed.insert(Trivex::entryId(entries.at(i)));
    for (auto row = first; row != last; ++row) {
        const QString id = Trivex::entryId((*row)->entry);
        if (!listed.contains(id))
            changes.gone.insert(id);
    }
    // An id may stand in the list twice.
    for (auto row = rows.cbegin(); row != rows.cend() && !listed.isEmpty(); ++row) {
        const QString id = Trivex::entryId((*row)->entry);
        if (listed.contains(id))
            changes.known.insert(id);
    }
    return changes;
}
