// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/keys/keytypes.h"

#include <QByteArray>

namespace Trivex {

struct KeyAlgorithm {
    const char *oid; ///< in dotted form
    int keyType; ///< `Trivex::KeyType`
    int bits; ///< 0: to be found in the key
};

/// The algorithm of that OID in dotted form; null for one that is not ours to name.
const KeyAlgorithm *keyAlgorithm(const QByteArray &oid);

/// The `Trivex::KeyType` of an algorithm OID in dotted form; `OtherKey` for all others.
int keyTypeOfAlgorithm(const QByteArray &oid);

} // namespace Trivex
