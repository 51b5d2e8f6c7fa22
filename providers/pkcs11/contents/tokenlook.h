// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/session.h"
#include "qca/tokens/tokenfacts.h"

namespace Trivex {

/// What `info` says beside the names of a token.
TRIVEX_TOKENS_EXPORT TokenFacts factsOf(const CK_TOKEN_INFO &info);

/// What the token in `slot` can do, and what is on it beside keys and certificates, as far as
/// `session` shows it. On the token's thread; throws `Pkcs11::Error`.
TokenLook lookAt(const Pkcs11::Session &session, CK_SLOT_ID slot);

} // namespace Trivex
