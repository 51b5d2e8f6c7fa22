// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/entryrows.h"

#include <QMetaType>
#include <QPointer>
#include <QSharedPointer>
#include <QtCrypto>

class KeyStoreEntry;

/// A row of the key store model. QML passes pointers to it around without looking inside.
struct KeyStoreItem {
    QCA::KeyStoreEntry entry;
    /// Made when somebody asks for it; views hold plain pointers to it as long as the row exists.
    mutable QSharedPointer<KeyStoreEntry> object;
    /// Where the entry comes from. Not owned; null once the store has been deleted, which takes the
    /// row along.
    QPointer<QCA::KeyStore> keyStore;

    /// What views show and filters ask of every row, read from the certificate once.
    struct Facts {
        QString name; ///< empty where the certificate has none; before it is read, the entry's
        QString issuer; ///< the same
        Trivex::RowOrigin origin;
        bool isRead = false;
    };
    mutable Facts facts;
};

Q_DECLARE_METATYPE(KeyStoreItem *)
