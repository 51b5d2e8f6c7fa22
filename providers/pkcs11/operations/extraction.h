// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/tokentable.h"
#include "qca/tokens/keyextraction.h"

namespace Trivex {

/// See `startKeyExtraction`. Only keys with CKA_EXTRACTABLE leave; of all others the error is
/// `KeyStays`, and the token is asked for nothing but that attribute.
///
/// The key comes wrapped (C_WrapKey, PKCS#11 2.40, 5.13) by an AES key that is made for it alone:
/// so a sensitive key leaves the same way as one that is not.
CancellationPtr startExtraction(TokenTable &tokens, const QString &keyStoreId,
                                const QByteArray &publicInfo, ExtractionDone done);

} // namespace Trivex
