// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "keystores/keystoreitem.h"

#include <QList>
#include <QSet>
#include <QString>

/// How the entries of a store differ from the rows that it has.
struct StoreChanges {
    QSet<QString> gone; ///< the ids of rows without an entry
    /// The entries without a row lie between these two, the second one not included.
    int first = 0;
    int end = 0;
    QSet<QString> known; ///< the ids of entries in between that have a row
};

/// Compares the rows of `keyStore` among `items` with `entries`. What is the same at the beginning
/// and at the end of both is passed over, because a store that grows reports again and again.
StoreChanges changesOf(const QList<KeyStoreItem> &items, const QCA::KeyStore *keyStore,
                       const QList<QCA::KeyStoreEntry> &entries);
