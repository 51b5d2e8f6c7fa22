// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/token.h"
#include "qca/tokens/storechange.h"

namespace Trivex {

Purpose purposeOf(const StoreChange &change);

/// The work of the change, for the token's thread. It puts the id of what was written into
/// `written`.
Token::Work workOf(const StoreChange &change, const std::shared_ptr<QString> &written);

} // namespace Trivex
