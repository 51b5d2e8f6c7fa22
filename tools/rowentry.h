// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/describe/description.h"

#include <QAbstractItemModel>
#include <QtCrypto>

namespace Trivex {

/// The entry of a row of `model`, without an object being made for it where that can be done; null
/// where it has none. `entryRole` is the role "keyStoreEntry".
const QCA::KeyStoreEntry *entryAt(const QAbstractItemModel &model, int row, int entryRole);

/// The wrapped entry behind a row's object ("keyStoreEntry"), or null: requests have none. It lives
/// as long as the object.
const QCA::KeyStoreEntry *wrappedEntry(QObject *object);

/// What a row stands for, as bytes.
struct RowEncoding {
    ShownKind kind = ShownKind::Certificate;
    QByteArray der; ///< empty where there is nothing to be read
};

/// Of a saved request in the role "type", as the key store model's `Type`.
constexpr int SavedRequestType = 5;

/// A row as it is now, to be read later, whatever becomes of it: to read thousands takes longer
/// than a window may stand still. GUI thread.
class HeldRow {
public:
    HeldRow() = default;
    HeldRow(const QAbstractItemModel &model, int row, int entryRole, int certificateRole);

    /// Decodes what the entry holds.
    RowEncoding encoding() const;

private:
    QCA::KeyStoreEntry m_entry;
    RowEncoding m_request; ///< where there is no entry
};

/// Of the certificate in a row's entry; without one of the saved request that the object in the
/// role "certificate" is.
RowEncoding rowEncoding(const QAbstractItemModel &model, int row, int entryRole,
                        int certificateRole);

} // namespace Trivex
