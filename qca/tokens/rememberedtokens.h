// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

namespace Trivex {

/// Whether what tokens show to anybody is kept for the next start, beside the provider's own
/// setting `remember_tokens`. For tokens that are read from then on. Any thread; never waits.
TRIVEX_QCA_EXPORT void setTokensRemembered(bool on);
TRIVEX_QCA_EXPORT bool tokensAreRemembered();

/// Removes what is kept of all tokens, soon. Any thread; does not wait. Nothing happens while no
/// token provider is loaded.
TRIVEX_QCA_EXPORT void forgetTokens();

} // namespace Trivex
