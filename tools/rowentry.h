// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCrypto>

namespace Trivex {

/// The wrapped entry behind a row's object ("keyStoreEntry"), or null: requests have none. It lives
/// as long as the object.
const QCA::KeyStoreEntry *wrappedEntry(QObject *object);

} // namespace Trivex
