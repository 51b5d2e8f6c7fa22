// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QtCrypto>

namespace Trivex {

/// Kinds of public key, as ints: 0 to 2 are `QCA::PKey::Type`, 3 is every elliptic-curve key of
/// X9.62 kind, the rest is ours.
enum KeyType : int {
    UnknownKey = -1,
    RsaKey = 0,
    DsaKey = 1,
    DhKey = 2,
    EllipticCurveKey = 3,
    Gost2001Key = 4,
    Gost2012Key256 = 5,
    Gost2012Key512 = 6,
    OtherKey = 7, ///< Ed25519, Ed448, X25519 and whatever has no number of its own
};

/// The kind of `key`; `UnknownKey` for a null key. Safe for the keys of any provider.
TRIVEX_QCA_EXPORT int keyType(const QCA::PKey &key);

/// DER SubjectPublicKeyInfo (RFC 5280, 4.1) of `key`; empty for a null key or one whose provider
/// can't encode it.
TRIVEX_QCA_EXPORT QByteArray encodedPublicKey(const QCA::PKey &key);

/// True when both are the same public key: RSA by modulus and exponent, DSA and DH by the public
/// value, GOST by curve and point, all other kinds by their encoding. Null keys and keys of
/// different kinds never match.
TRIVEX_QCA_EXPORT bool isSamePublicKey(const QCA::PublicKey &a, const QCA::PublicKey &b);

/// `key.toPublicKey()`, null for a null key (where stock QCA would crash).
TRIVEX_QCA_EXPORT QCA::PublicKey publicKeyOf(const QCA::PrivateKey &key);

/// `key.isPrivate()`, false for a null key (where stock QCA would crash).
TRIVEX_QCA_EXPORT bool isPrivateKey(const QCA::PKey &key);

/// The id of the key store that holds `key`, for a token key of our own providers; else empty.
TRIVEX_QCA_EXPORT QString keyStoreIdOf(const QCA::PKey &key);

} // namespace Trivex
