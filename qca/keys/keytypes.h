// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

namespace Trivex {

/// Kinds of public key, as ints: 0 to 2 are `QCA::PKey::Type`, 3 is every elliptic-curve key of
/// X9.62 kind, the rest is ours.
enum KeyType : int {
    UnknownKey = -1,
    RsaKey = 0,
    DsaKey = 1,
    DhKey = 2,
    EllipticCurveKey = 3,
    Gost2001Key = 4,
    Gost2012Key256 = 5,
    Gost2012Key512 = 6,
    OtherKey = 7, ///< Ed25519, Ed448, X25519 and whatever has no number of its own
};

} // namespace Trivex
