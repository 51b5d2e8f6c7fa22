// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/der.h"

namespace Trivex {

// What bytes look like, told by the outermost elements of their encoding alone: cheap, and no
// promise that they can be decoded.

/// The tags of the first elements in a SEQUENCE; -1 where there are fewer.
struct Shape {
    int first = -1;
    int second = -1;
    int third = -1;
    int count = 0;
    Der::Slice firstContent;
    Der::Slice secondContent;

    explicit Shape(Der::Slice sequence);
    /// Body, algorithm and signature: certificates, requests and lists.
    bool isSealed() const;
    /// The same with a holder behind its version (RFC 5755, 4.1), which no certificate has.
    bool isAttributeCertificate() const;
    /// OCSPResponse (RFC 6960, 4.2.1).
    bool isRevocationAnswer() const;
    /// A ContentInfo of PKCS#7 or CMS whose content is encrypted (RFC 5652, 6 and 8; RFC 5083).
    bool isEncryptedMessage() const;
    /// PFX ::= SEQUENCE { version INTEGER (3), authSafe ContentInfo, ... } (RFC 7292, 4).
    bool isBundle() const;
    /// RSAPublicKey (RFC 8017, A.1.1): a long odd modulus and a short exponent.
    bool isRsaPublicKey() const;
    /// Ecdsa-Sig-Value (RFC 3279, 2.2.3) of any usual curve.
    bool isCurveSignature() const;
};

/// The beginning of one is enough: a bundle that is cut off is to be reported as a bundle.
bool beginsAsBundle(const QByteArray &bytes);

/// Whether bytes that are no whole element begin as a certificate, request, list, key or message
/// does, by at least three elements that lie in each other as these have them.
bool beginsAsOurs(Der::Slice bytes);

/// Whether a PEM block says that it is something of ours: other programs have blocks of their own.
bool namesOurs(const QByteArray &label);

/// Whether it may be a signature in itself, which has no mark at all: RSA's is as long as its key,
/// that of a curve as two of its numbers, and both look like noise.
bool isRawSignature(const QByteArray &bytes);

} // namespace Trivex
