// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

namespace Trivex {

/// Signature algorithms as ints: 0 to 10 are `QCA::SignatureAlgorithm`, 11 to 15 are ours.
enum SignatureNumber : int {
    UnknownSignature = 0,
    EcdsaSha256Signature = 11,
    EcdsaSha384Signature = 12,
    Gost2001Signature = 13,
    Gost2012Signature256 = 14,
    Gost2012Signature512 = 15,
};

} // namespace Trivex
