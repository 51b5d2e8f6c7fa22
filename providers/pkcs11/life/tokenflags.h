// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/tokensexport.h"
#include "qca/tokens/tokens.h"

#include <p11-kit/pkcs11.h>

namespace Trivex {

/// The flags of a token about itself and its PIN (PKCS#11 2.40, 3.2).
struct TokenFlags {
    bool needsLogin = false;
    bool hasUserPin = false;
    /// Nobody has to give an empty PIN: NSS without a password has one.
    bool pinMayBeEmpty = false;
    bool hasPinPad = false;
    bool readOnly = false;
    PinState pinState = PinState::Normal;
    PinState officerPinState = PinState::Normal;
    bool pinToBeChanged = false;
    int shortestPin = 0; ///< bytes; 0 where the token does not say
    int longestPin = 0;
};

TRIVEX_TOKENS_EXPORT TokenFlags flagsOf(const CK_TOKEN_INFO &info);

/// False for a blank token. A database of NSS, which takes an empty PIN, says that it is not
/// initialised while nobody has chosen one; it holds certificates all the same, and its first PIN
/// is set in its place. It has a name, unlike the empty slot of a TPM with the same flags.
TRIVEX_TOKENS_EXPORT bool isUsable(const CK_TOKEN_INFO &info);

/// Puts into the status what the flags say; true where something is different.
TRIVEX_TOKENS_EXPORT bool applyFlags(const TokenFlags &flags, TokenStatus *status);

} // namespace Trivex
