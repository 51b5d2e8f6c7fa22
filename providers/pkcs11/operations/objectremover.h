// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/tokenconnection.h"

namespace Trivex {

/// Removes a certificate, and with a key bundle its key pair, unless another certificate belongs to
/// that too. Throws `Pkcs11::Error`; everything is as before then.
///
/// The certificate goes first, so that a removal cut short leaves a key that shows nowhere; the
/// private key last, because it is all that can't be put back.
void removeEntry(TokenConnection &connection, Operation &operation, const QString &entryId);

} // namespace Trivex
