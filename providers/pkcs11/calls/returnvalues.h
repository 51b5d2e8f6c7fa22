// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/tokensexport.h"
#include "qca/tokens/tokens.h"

#include <p11-kit/pkcs11.h>

namespace Trivex::Pkcs11 {

// Return values are named and interpreted here only: all those of PKCS#11 3.0.

/// The meaning of a return value; `DeviceFailure` for an unknown one.
TRIVEX_TOKENS_EXPORT TokenError::Kind kindOf(CK_RV returnValue) noexcept;

/// The name of a return value ("CKR_PIN_INCORRECT"); its number in hexadecimal for a maker's own.
TRIVEX_TOKENS_EXPORT QString returnValueName(CK_RV returnValue);

/// True when a session can't be used any more after a call in it returned `returnValue`.
bool endsSession(CK_RV returnValue) noexcept;

/// True when a call that returned `returnValue` has refused what it was asked, and so has made
/// nothing. After a device's error or a lack of room it may have.
bool isRefusal(CK_RV returnValue) noexcept;

} // namespace Trivex::Pkcs11
