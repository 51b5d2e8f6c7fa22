// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/keyalgorithms.h"

#include <array>

namespace Trivex {

namespace {

constexpr std::array<KeyAlgorithm, 11> Algorithms = {{
    {"1.2.840.113549.1.1.1", RsaKey, 0},
    {"1.2.840.10040.4.1", DsaKey, 0},
    {"1.2.840.113549.1.3.1", DhKey, 0},
    {"1.2.840.10046.2.1", DhKey, 0},
    {"1.2.840.10045.2.1", EllipticCurveKey, 0},
    {"1.2.643.2.2.19", Gost2001Key, 256},
    {"1.2.643.7.1.1.1.1", Gost2012Key256, 256},
    {"1.2.643.7.1.1.1.2", Gost2012Key512, 512},
    {"1.3.101.112", OtherKey, 0},
    {"1.3.101.113", OtherKey, 0},
    {"1.2.840.113549.1.1.10", OtherKey, 0},
}};

} // namespace

const KeyAlgorithm *keyAlgorithm(const QByteArray &oid)
{
    for (const KeyAlgorithm &algorithm : Algorithms) {
        if (oid == algorithm.oid)
            return &algorithm;
    }
    return nullptr;
}

int keyTypeOfAlgorithm(const QByteArray &oid)
{
    const KeyAlgorithm *algorithm = keyAlgorithm(oid);
    return algorithm ? algorithm->keyType : int(OtherKey);
}

} // namespace Trivex
