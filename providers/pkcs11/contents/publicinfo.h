// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace Trivex {

/// DER SubjectPublicKeyInfo of an RSA key (RFC 3279, 2.3.1) from CKA_MODULUS and
/// CKA_PUBLIC_EXPONENT, which are big-endian. Empty when one of them is.
QByteArray rsaPublicInfo(const QByteArray &modulus, const QByteArray &exponent);

/// DER SubjectPublicKeyInfo of an elliptic-curve key (RFC 5480, 2) from CKA_EC_PARAMS and the
/// encoded point. Empty when one of them is.
QByteArray ecPublicInfo(const QByteArray &parameters, const QByteArray &point);

/// The same of a key on an Edwards curve (RFC 8410, 4): `parameters` name the curve by an OID or by
/// a PrintableString (PKCS#11 3.0, 2.3.5), and `point` is CKA_EC_POINT as it is, wrapped into an
/// OCTET STRING or not. Empty for another curve, and for a point of another size.
QByteArray edwardsPublicInfo(const QByteArray &parameters, const QByteArray &point);

/// `attribute` as it is when it has the size of a point, else what it wraps as an OCTET STRING;
/// empty when that has another size.
QByteArray pointOfSize(const QByteArray &attribute, int size);

} // namespace Trivex
