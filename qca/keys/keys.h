// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"
#include "qca/keys/keytypes.h"

#include <QtCrypto>

namespace Trivex {

/// The kind of `key`; `UnknownKey` for a null key. Safe for the keys of any provider.
TRIVEX_QCA_EXPORT int keyType(const QCA::PKey &key);

/// The name of keys of kind `type`, the same in every language; empty for kinds that we don't name.
TRIVEX_QCA_EXPORT QString keyTypeName(int type);

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
