// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/secret.h"
#include "qca/questions/cancellation.h"
#include "qca/tokens/tokens.h"

#include <functional>

namespace Trivex {

/// A copy of a private key that its token has given out.
struct ExtractedKey {
    Secret privateInfo; ///< DER PrivateKeyInfo (RFC 5208); empty on failure
    TokenError error; ///< has been published by then
};

/// Called once, on any thread.
using ExtractionDone = std::function<void(const ExtractedKey &)>;

/// Asks the token of the store `keyStoreId` for the private key that belongs to `publicInfo` (DER
/// SubjectPublicKeyInfo) and returns; `done` follows, perhaps before that. It asks for the PIN as
/// any operation does. The result names the operation, for `cancelTokenTask`; it is null
/// when no token provider is loaded, or the store is none of its own: nothing happens then.
TRIVEX_QCA_EXPORT CancellationPtr startKeyExtraction(const QString &keyStoreId,
                                                     const QByteArray &publicInfo,
                                                     ExtractionDone done);

} // namespace Trivex
