// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/keys/keymaterial.h"

namespace Trivex {

/// Reads a private key in any common form: PrivateKeyInfo, EncryptedPrivateKeyInfo (RFC 5958), and
/// the older forms of RSA, DSA and EC keys; encrypted by old ciphers too. `ErrorPassphrase` when
/// the passphrase is missing or wrong.
QCA::ConvertResult readPrivateKey(const QCA::SecureArray &der, const QCA::SecureArray &passphrase,
                                  KeyMaterial *material);

/// The same from a PEM text, from its first private key.
QCA::ConvertResult readPrivateKeyPem(const QString &pem, const QCA::SecureArray &passphrase,
                                     KeyMaterial *material);

/// DER EncryptedPrivateKeyInfo by PBES2; empty for a scheme that libcrypto does not have.
QCA::SecureArray encryptPrivateKey(const QCA::SecureArray &pkcs8,
                                   const QCA::SecureArray &passphrase, QCA::PBEAlgorithm pbe);

} // namespace Trivex
