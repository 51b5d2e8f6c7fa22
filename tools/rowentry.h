// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/describe/description.h"

#include <QtCrypto>

namespace Trivex {

/// The wrapped entry behind a row's object ("keyStoreEntry"), or null: requests have none. It lives
/// as long as the object.
const QCA::KeyStoreEntry *wrappedEntry(QObject *object);

/// What a row stands for, as bytes.
struct RowEncoding {
    ShownKind kind = ShownKind::Certificate;
    QByteArray der; ///< empty where there is nothing to be read
};

/// Of the certificate in a row's entry, or of the saved request that its certificate object is.
RowEncoding rowEncoding(QObject *entry, QObject *certificate);

} // namespace Trivex
