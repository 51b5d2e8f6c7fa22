// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QtCrypto>

#include <optional>

namespace Trivex {

/// The text that a signature of `data` covers: its SHA-256 digest in lower-case hexadecimal. Empty
/// when there is no SHA-256, or when `data` views a file that has been cut short since.
QByteArray signedText(const QByteArray &data);

/// Whether `key` is RSA, the only kind that makes these signatures. Asks no token, runs no event
/// loop.
bool canSignRaw(const QCA::PKey &key);

/// The PKCS#1 v1.5 signature of `text` itself, without digest and DigestInfo. Empty for a key that
/// is not RSA, and when the signing fails or its question is rejected. May run an event loop.
QByteArray rawSignature(const QCA::PrivateKey &key, const QByteArray &text);

/// True when `signature` is that of `text` by `key`; false for a key that is not RSA.
bool isRawSignatureValid(const QCA::PrivateKey &key, const QByteArray &text,
                         const QByteArray &signature);

/// The contents of the file, up to the size of the longest signature; nothing when it can't be
/// opened.
std::optional<QByteArray> readSignature(const QString &path);

} // namespace Trivex
