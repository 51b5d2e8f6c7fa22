// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/keys/keyalgorithms.h"

#include "qca/asn1/algorithmids.h"

#include <array>

namespace Trivex {

namespace {

constexpr std::array<KeyAlgorithm, 11> Algorithms = {{
    {Oid::RsaEncryption, RsaKey, 0},
    {Oid::Dsa, DsaKey, 0},
    {Oid::DhKeyAgreement, DhKey, 0},
    {Oid::DhPublicNumber, DhKey, 0},
    {Oid::EcPublicKey, EllipticCurveKey, 0},
    {Oid::GostKey2001, Gost2001Key, 256},
    {Oid::GostKey256, Gost2012Key256, 256},
    {Oid::GostKey512, Gost2012Key512, 512},
    {Oid::Ed25519, OtherKey, 0},
    {Oid::Ed448, OtherKey, 0},
    {Oid::RsaPss, OtherKey, 0},
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
