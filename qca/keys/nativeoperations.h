// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/handles.h"
#include "qca/base/trivexqcaexport.h"

#include <QByteArray>

namespace Trivex {

// The operations of libcrypto on one block, without digesting. All give false for a null key, and
// leave libcrypto's error queue empty.

/// RSA pads by PKCS#1 v1.5 type 1; other signatures are in libcrypto's form (DER for DSA and
/// ECDSA).
bool signNative(EVP_PKEY *key, const QByteArray &block, QByteArray *signature);
bool verifyNative(EVP_PKEY *key, const QByteArray &block, const QByteArray &signature);

/// Used for keys that need the whole message (Ed25519, Ed448).
bool signMessageNative(EVP_PKEY *key, const QByteArray &message, QByteArray *signature);
bool verifyMessageNative(EVP_PKEY *key, const QByteArray &message, const QByteArray &signature);

/// DER ECDSA-Sig-Value or DSS-Sig-Value (RFC 3279) into r and s side by side, `bits` long each
/// (IEEE 1363); empty when it is none.
QByteArray sideBySide(const QByteArray &signature, int bits);
/// The way back; empty when the two are not of one length.
TRIVEX_QCA_EXPORT QByteArray derSignature(const QByteArray &sideBySide);

} // namespace Trivex
