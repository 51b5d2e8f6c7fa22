// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/session.h"
#include "qca/tokens/tokenfacts.h"

namespace Trivex {

/// The facts in `info` beside the names of the token.
TRIVEX_TOKENS_EXPORT TokenFacts factsOf(const CK_TOKEN_INFO &info);

/// Adds to `all` what a token that knows `mechanism` with `info` can do. Nothing for a mechanism
/// that is of no use here.
TRIVEX_TOKENS_EXPORT void noteAbility(CK_MECHANISM_TYPE mechanism, const CK_MECHANISM_INFO &info,
                                      QVector<TokenAbility> *all);

/// Whether a mechanism is for `use`, a flag of CK_MECHANISM_INFO. One that tells no use may be for
/// any.
TRIVEX_TOKENS_EXPORT bool isFor(const CK_MECHANISM_INFO &info, CK_FLAGS use);

/// What the token in `slot` can do, and what is on it beside keys and certificates, as far as
/// `session` shows it. On the token's thread; throws `Pkcs11::Error`.
TokenLook lookAt(const Pkcs11::Session &session, CK_SLOT_ID slot);

} // namespace Trivex
