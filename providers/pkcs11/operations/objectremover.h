// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/tokenconnection.h"

namespace Trivex {

/// Removes the entry `entryId`: its certificate and, of a key bundle, its key pair, unless another
/// certificate uses the same key. Throws `Pkcs11::Error`; nothing has changed then. On the token's
/// thread.
///
/// The certificate is removed first, so that an interrupted removal leaves a key without one, which
/// lists show as such. The private key is removed last, because it can't be restored.
void removeEntry(TokenConnection &connection, Operation &operation, const QString &entryId);

/// Removes both halves of the key `keyId`, which has no certificate on the token: one that has got
/// its certificate meanwhile stays, and is not found; so does one that the token does not tell from
/// others for certain. Throws `Pkcs11::Error`; nothing has changed
/// then, and the public half is back where it has to be. On the token's thread.
void removeKey(TokenConnection &connection, Operation &operation, const QString &keyId);

} // namespace Trivex
