// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QtCrypto>

#include <optional>

namespace Trivex {

// Fields of a certificate for which QCA has no name.

/// The first street address (2.5.4.9) of the subject, in at most 1023 bytes of UTF-8; nothing when
/// it has none. An empty text for a certificate that OpenSSL refuses. The certificate is one of our
/// own decoder.
std::optional<QString> streetAddress(const QCA::Certificate &certificate);

/// OpenSSL's long name of the public key's algorithm, "Elliptic Curve" for X9.62 keys. Empty when
/// the certificate or its key can't be read or the algorithm has no name. The keys of algorithms
/// that OpenSSL knows by name only (GOST without an engine) are named all the same.
QString publicKeyAlgorithmName(const QByteArray &der);

} // namespace Trivex
