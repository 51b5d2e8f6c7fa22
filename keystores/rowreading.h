// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "keystores/keystoreitem.h"

class Certificate;

// What is read of a certificate for a row of the key store model.

/// The texts and the origin of `certificate`, which is that of `item`.
KeyStoreItem::Facts readFacts(const KeyStoreItem &item, const Certificate &certificate);

/// What the row shows as its name, and as its issuer. The words for what is not there follow the
/// language, and so are not kept.
QString shownName(const KeyStoreItem::Facts &facts);
QString shownIssuer(const KeyStoreItem::Facts &facts);
