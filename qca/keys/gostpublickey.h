// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QByteArray>

namespace Trivex {

/// The public key in a GOST SubjectPublicKeyInfo (RFC 4491, 2.3; RFC 9215, 4), taken apart without
/// an engine.
struct TRIVEX_QCA_EXPORT GostPublicKey {
    int keyType = -1; ///< `Gost2001Key`, `Gost2012Key256` or `Gost2012Key512`; -1: none of them
    QByteArray curve; ///< dotted OID of the parameter set
    QByteArray digest; ///< dotted OID of the digest's parameters; empty when they are left out
    QByteArray point; ///< X and Y side by side, each little-endian: 64 or 128 bytes

    bool isValid() const { return keyType >= 0; }
    /// Invalid when the bytes are no GOST key.
    static GostPublicKey fromPublicInfo(const QByteArray &publicInfo);
    /// DER SubjectPublicKeyInfo; it includes the digest's parameters if they are set.
    QByteArray publicInfo() const;
    /// The OID of the digest where RFC 9215 wants it written, else empty.
    static QByteArray digestToWrite(int keyType, const QByteArray &curve);
};

/// A form of `publicInfo` (DER SubjectPublicKeyInfo) that is equal for equal keys: one GOST key has
/// several encodings, because its digest may be left out and some curves have two OIDs. It counts a
/// 256 bit key of 2001 and of 2012 as the same, which it is, and an RSA key that is for RSASSA-PSS
/// alone as the same key without that restriction, which a token does not know. Other keys are
/// returned as they are, without a copy of the bytes.
TRIVEX_QCA_EXPORT QByteArray comparablePublicInfo(const QByteArray &publicInfo);

} // namespace Trivex
