// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaType>
#include <QPointer>
#include <QSharedPointer>
#include <QtCrypto>

class KeyStoreEntry;

/// A row of the key store model. QML passes pointers to it around without looking inside.
struct KeyStoreItem {
    /// Made for this row; views hold plain pointers to it as long as the row exists.
    QSharedPointer<KeyStoreEntry> entry;
    /// Where the entry comes from. Not owned; null once the store has been deleted, which takes the
    /// row along.
    QPointer<QCA::KeyStore> keyStore;
};

Q_DECLARE_METATYPE(KeyStoreItem *)
