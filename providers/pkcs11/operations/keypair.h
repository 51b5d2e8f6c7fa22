// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/tokenconnection.h"

namespace Trivex {

/// Describes the key pair to make.
struct GenerationRequest {
    CK_KEY_TYPE type = CKK_RSA;
    int bits = 0; ///< RSA
    int exponent = 0; ///< RSA
    QByteArray curve; ///< elliptic curves and GOST: DER parameters; empty fails
    QByteArray otherCurve; ///< the same curve for a token that does not take `curve`; may be empty
    QByteArray digest; ///< GOST: DER identifier of the digest's parameters
};

/// Makes a key pair: private key sensitive and not extractable, CKA_ID as `keyIdentifierOf` gives
/// it, where the token allows that to be set. An RSA pair whose exponent the token may have refused
/// is tried once more with 65537, and a curve once more in its other form. On failure nothing of it
/// stays.
/// Throws `Pkcs11::Error`.
TokenKeyPtr generateKeyPair(TokenConnection &connection, Operation &operation,
                            const GenerationRequest &request);

/// Removes a pair that `generateKeyPair` has just made. Throws `Pkcs11::Error`.
void removeKeyPair(TokenConnection &connection, Operation &operation, const QByteArray &publicInfo);

} // namespace Trivex
