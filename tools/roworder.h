// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/entrymodel.h"

#include <QHash>

namespace Trivex {

/// The order in which a list shows its rows. Texts in the order of the user's language; rows that
/// are alike stay as they were.
class RowOrder {
public:
    enum Key {
        Given, ///< as they are
        Name,
        Issuer,
        Until, ///< the end of validity; rows without one come last
        Place, ///< the store; those of one store stay as they are
    };

    Key key() const { return m_key; }
    bool isDescending() const { return m_descending; }
    /// True when it was another order before.
    bool set(Key key, bool descending);

    /// Sorts rows of `entries`, which are in the order of their names already if `named` says so.
    void sort(const EntryModel &entries, QVector<int> &rows, bool named);

    /// The names of the stores in the order in which they are listed: as given, unless they are
    /// what is sorted by.
    QStringList sortedPlaces(QStringList places) const;

private:
    QVector<qint64> placesByText(const EntryModel &entries, const QVector<int> &rows);
    void rank(const QStringList &texts);

    Key m_key = Given;
    bool m_descending = false;
    /// Which of all texts a text is. Kept: a search sorts with each letter, and comparing texts is
    /// what takes the time.
    QHash<QString, qint64> m_ranks;
};

} // namespace Trivex
