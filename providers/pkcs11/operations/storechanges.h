// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/tokentable.h"
#include "qca/tokens/storechange.h"

namespace Trivex {

/// Starts the change on the token of the store `keyStoreId`; see `TokenBackend::startChange`.
bool startChange(TokenTable &tokens, const QString &keyStoreId, const StoreChange &change,
                 StoreChangeDone done);

} // namespace Trivex
