// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace Trivex {

// The texts of certificate fields, as pure functions. Thread-safe.

/// Bytes as hexadecimal numbers with `separator` between them. Each byte is read as a signed
/// number and written as sign and magnitude, in upper case and at least two characters wide; the
/// separator after the last byte is left out only when all groups are two characters wide. Both
/// are long-standing parts of the display format: 00 C3 gives "00:-3D:", a single 05 gives "5".
QString hexColonText(const QByteArray &bytes, QChar separator);

/// The text of a signature algorithm by its number (`Trivex::signatureAlgorithm`); the text for an
/// unknown one outside 1 to 15.
QString signatureAlgorithmText(int number);

/// "RSA", "DSA", "DH", "Elliptic Curve" for 0 to 3; empty for all else.
QString keyTypeText(int keyType);

/// The name of the public key algorithm in a DER certificate: libcrypto's long name, or the
/// dotted OID where it has none. Needs no implementation of the algorithm. Empty when the
/// certificate does not parse.
QString publicKeyAlgorithmName(const QByteArray &der);

/// The subject's street address (X.520, 2.5.4.9).
struct StreetAddress {
    enum Presence { Unreadable, Absent, Present };
    Presence presence = Unreadable;
    QString text; ///< the first 1023 bytes of its UTF-8 form
};
StreetAddress streetAddress(const QByteArray &der);

} // namespace Trivex
