// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/tokensexport.h"
#include "qca/tokens/tokens.h"

#include <p11-kit/pkcs11.h>

namespace Trivex::Pkcs11 {

// The only place where return values are named and interpreted. It knows all of PKCS#11 3.0.

/// What a return value means to a caller; `DeviceFailure` for one that is not known.
TRIVEX_TOKENS_EXPORT TokenError::Kind kindOf(CK_RV returnValue) noexcept;

/// Its name ("CKR_PIN_INCORRECT"), or its number in hexadecimal where it has none: a maker's own.
TRIVEX_TOKENS_EXPORT QString returnValueName(CK_RV returnValue);

/// True when the session that got `returnValue` is of no use any more.
bool endsSession(CK_RV returnValue) noexcept;

} // namespace Trivex::Pkcs11
