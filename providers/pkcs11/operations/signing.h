// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/tokentable.h"

#include <QtCrypto>

#include <optional>

namespace Trivex {

/// A private key on a token, wherever that is plugged in.
struct TokenKeyReference {
    QString storeId; ///< empty: no key
    TokenKeyPtr key;
};

/// Signs `block` with a key on a token: RSA pads it by PKCS#1 v1.5 (CKM_RSA_PKCS), elliptic curves
/// take it as the digest and give DER ECDSA-Sig-Value, Edwards curves take it as the message, GOST
/// takes it as the digest and gives the octets of RFC 9215: s and r, both big-endian.
/// Waits for the token, and for the PIN where it asks for one; on the GUI thread in a nested event
/// loop; the caller may be gone by then. False when the token is gone, or refuses, or nobody gives
/// the PIN; the reason is published.
bool signOnToken(TokenTable &tokens, const TokenKeyReference &reference, const QByteArray &block,
                 QByteArray *signature);

/// Signs `message` with a GOST key, by the octets of RFC 9215; as above. `digest` is that of the
/// message, in the order in which digests are written; empty where only the token can compute it.
/// Without a message the digest is all that the token gets.
bool signMessageOnToken(TokenTable &tokens, const TokenKeyReference &reference,
                        const std::optional<QByteArray> &message, const QByteArray &digest,
                        QByteArray *signature);

/// Decrypts by PKCS#1 v1.5; as above.
bool decryptOnToken(TokenTable &tokens, const TokenKeyReference &reference, const QByteArray &data,
                    QCA::SecureArray *plain);

} // namespace Trivex
