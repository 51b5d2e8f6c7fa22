// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QtCrypto>

namespace Trivex {

// What a list shows and finds of a row beyond its source's own roles.

/// What is looked through of a certificate or a request with its properties, folded.
QString searchTextOf(const QObject &certificate);

/// The store's name for people: two of them come with the name of the code behind them. The same
/// string for all rows of a store, without memory of their own. GUI thread only.
QString shownStoreName(const QCA::KeyStoreEntry &entry, bool isSystem);

/// The first letter or digit of a name, for the avatar.
QString initialOf(const QString &name);

} // namespace Trivex
