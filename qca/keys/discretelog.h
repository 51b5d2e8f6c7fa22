// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/asn1/handles.h"

#include <QtCrypto>

namespace Trivex {

// Functions for DSA and Diffie-Hellman keys. `type` is libcrypto's name, "DSA" or "DH".

/// A key from its numbers; `y` or `x` may be null. Null when the numbers make no key.
PKeyHandle discreteLogKey(const char *type, const QCA::DLGroup &domain, const QCA::BigInteger *y,
                          const QCA::BigInteger *x);

/// A new key pair on `domain`; null for an unusable domain.
PKeyHandle generateDiscreteLogKey(const char *type, const QCA::DLGroup &domain);

/// The domain of a key; null for a null key.
QCA::DLGroup discreteLogDomain(const EVP_PKEY *key);

} // namespace Trivex
