// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/tokentable.h"

#include <QtCrypto>

#include <optional>

namespace Trivex {

/// Names a private key on a token by the token's store, whichever slot the token is in.
struct TokenKeyReference {
    QString storeId; ///< empty: no key
    TokenKeyPtr key;
};

/// Signs `block` with a key on a token. What `block` is and what `*signature` becomes depends on
/// the key:
/// - RSA: a block that the token pads by PKCS#1 v1.5 (CKM_RSA_PKCS); the octets of the signature;
/// - RSA for RSASSA-PSS alone: a digest of its kind (`pssSchemeOf`); the octets of the signature;
/// - elliptic curves: a digest; DER ECDSA-Sig-Value (RFC 3279, 2.2.3);
/// - Edwards curves: the message; the octets of the signature;
/// - GOST: a digest; the octets of RFC 9215, s and then r, both big-endian.
///
/// `bits` is the size of the key, which tells how long its signatures are.
///
/// Waits for the token and for the PIN, on the GUI thread in a nested event loop, so the caller may
/// be destroyed meanwhile. False when the token is gone or refuses, or when nobody gives the PIN;
/// the reason is published.
bool signOnToken(TokenTable &tokens, const TokenKeyReference &reference, int bits,
                 const QByteArray &block, QByteArray *signature);

/// Signs `message` with a GOST key; otherwise as `signOnToken`. `digest` is the message's digest in
/// the order in which digests are written; empty when only the token can compute it. Without a
/// message the token gets the digest alone.
bool signMessageOnToken(TokenTable &tokens, const TokenKeyReference &reference,
                        const std::optional<QByteArray> &message, const QByteArray &digest,
                        QByteArray *signature);

/// Decrypts `data` with an RSA key by PKCS#1 v1.5; otherwise as `signOnToken`.
bool decryptOnToken(TokenTable &tokens, const TokenKeyReference &reference, const QByteArray &data,
                    QCA::SecureArray *plain);

/// The ids of the entries with a key that the token says it can't sign with: it lacks what the
/// signature takes. On the token's thread; throws `Pkcs11::Error` for a token that has gone.
QSet<QString> unfitToSign(const TokenConnection &connection);

} // namespace Trivex
