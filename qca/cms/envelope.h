// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/handles.h"
#include "qca/base/trivexqcaexport.h"

#include <QByteArray>
#include <QList>

#include <optional>

namespace Trivex {

// Encrypted messages (RFC 5652, 6; those of PKCS#7 too), DER. Any thread.

/// A message that each of `recipients` (certificates, DER) can decrypt, by AES-256 in CBC mode
/// (RFC 8551, 2.7). Empty when there is none, or one whose key can't take part.
TRIVEX_QCA_EXPORT QByteArray encryptedFor(const QList<QByteArray> &recipients,
                                          const QByteArray &document);

/// Whether `message` is an encrypted message.
TRIVEX_QCA_EXPORT bool isEncryptedMessage(const QByteArray &message);

/// The document of a message for `certificate` (DER), whose private key is `key`. Nothing for a
/// message that is not for it, or was damaged.
TRIVEX_QCA_EXPORT std::optional<QByteArray>
decryptedBy(EVP_PKEY *key, const QByteArray &certificate, const QByteArray &message);

} // namespace Trivex
