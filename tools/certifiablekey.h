// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokenfacts.h"

namespace Trivex {

/// Whether a request can be made for a token's key, as far as is known before a login: its public
/// half shows, and it signs.
bool canBeCertified(const TokenKeyFacts &key);

} // namespace Trivex
