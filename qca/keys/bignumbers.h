// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/handles.h"

#include <QtCrypto>

namespace Trivex {

/// libcrypto's copy of a number; null for a negative one.
BigNumHandle toBigNum(const QCA::BigInteger &number);

/// 0 for null.
QCA::BigInteger fromBigNum(const BIGNUM *number);

/// The value of a key's parameter (an `OSSL_PKEY_PARAM_*` name); 0 when it has none.
QCA::BigInteger keyNumber(const EVP_PKEY *key, const char *parameter);

/// A parameter of a key to be made, and its value.
struct KeyParameter {
    const char *name;
    QCA::BigInteger value;
};

/// A key of `type` ("RSA", "DSA", "DHX") from its numbers; null when they make no key.
PKeyHandle keyFromNumbers(const char *type, const QList<KeyParameter> &numbers, bool isPrivate);

} // namespace Trivex
