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

} // namespace Trivex
