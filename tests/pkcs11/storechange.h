// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokenregistry.h"

namespace TrivexTest {

/// Changes the store, and waits for the end while the event loop runs; `patience` in ms. Whether
/// the change ended well.
bool changeStore(const QString &storeId, Trivex::StoreChange::Kind kind, const QString &entryId,
                 int patience);

} // namespace TrivexTest
