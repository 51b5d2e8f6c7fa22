// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/tokenconnection.h"

namespace Trivex {

/// Removes the entry `entryId`: its certificate and, of a key bundle, its key pair, unless another
/// certificate uses the same key. Throws `Pkcs11::Error`; nothing has changed then. On the token's
/// thread.
///
/// The certificate is removed first, so that an interrupted removal leaves a key that no list
/// shows. The private key is removed last, because it can't be restored.
void removeEntry(TokenConnection &connection, Operation &operation, const QString &entryId);

} // namespace Trivex
