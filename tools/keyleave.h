// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tools/entrymodel.h"
#include "tools/fileitems.h"

namespace Trivex {

/// Whether the private key of something may leave the place where it is. A singleton in QML. GUI
/// thread.
class KeyLeave : public QObject {
    Q_OBJECT
public:
    enum Leave {
        NoKey,
        Leaves,
        AsksToken, ///< the token tells it only to whoever has typed its PIN
        Stays, ///< the token gives the key to nobody
        IsLocked, ///< it lies in the file encrypted, by a password that nobody was asked for
        IsAlone, ///< its certificate is not there
    };
    Q_ENUM(Leave)

    explicit KeyLeave(QObject *parent = nullptr);

    // A `Leave`.
    /// Of the row of this identity, as far as it is known at the moment.
    Q_INVOKABLE static int ofRow(Trivex::EntryModel *entries, const QString &identity);
    /// Of an item of a file.
    Q_INVOKABLE static int ofItem(Trivex::FileItemModel *items, int row);
    /// Why a key does not leave, as a sentence; empty where it does or may.
    Q_INVOKABLE static QString reason(int leave);
};

/// The entry of that row, where it is a private key with its certificate; else null.
const QCA::KeyStoreEntry *wrappedBundle(const EntryModel *entries, const QString &identity);

} // namespace Trivex
