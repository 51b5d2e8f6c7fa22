// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QtCrypto>

#include <optional>

namespace Trivex {

/// What a signature of `data` is made over: the lower-case hexadecimal text of its SHA-256 digest.
/// Empty when there is no SHA-256, or when `data` views a file that has been cut short since.
QByteArray signedText(const QByteArray &data);

/// Whether `key` is of the one kind whose signatures these are, RSA. Asks no token, runs no event
/// loop.
bool canSignRaw(const QCA::PKey &key);

/// The PKCS#1 v1.5 signature of `text` itself, without digest and DigestInfo. Empty for a key that
/// is not RSA, and when the signing fails or its question is rejected. May run an event loop.
QByteArray rawSignature(const QCA::PrivateKey &key, const QByteArray &text);

/// True when `signature` is that of `text` by `key`; false for a key that is not RSA.
bool isRawSignatureValid(const QCA::PrivateKey &key, const QByteArray &text,
                         const QByteArray &signature);

/// The contents of the file, cut behind what any signature can have; nothing when it can't be
/// opened.
std::optional<QByteArray> readSignature(const QString &path);

} // namespace Trivex
