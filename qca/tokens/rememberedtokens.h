// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"

#include <QString>

#include <functional>

namespace Trivex {

/// Whether what tokens show to anybody is kept for the next start, beside the provider's own
/// setting `remember_tokens`. For tokens that are read from then on. Any thread; never waits.
TRIVEX_QCA_EXPORT void setTokensRemembered(bool on);
TRIVEX_QCA_EXPORT bool tokensAreRemembered();

/// Where it is stored whether tokens are remembered: another process may have switched it off since
/// `setTokensRemembered`. Called on any thread, and may read a file.
using RememberedSetting = std::function<bool()>;
TRIVEX_QCA_EXPORT void setRememberedSetting(RememberedSetting setting);
/// `tokensAreRemembered`, and the stored setting, if there is one, says so too. Any thread; may
/// read a file.
TRIVEX_QCA_EXPORT bool tokensAreStillRemembered();

/// Where it is kept: "trivex/tokens" in the user's cache directory (XDG Base Directory
/// Specification).
TRIVEX_QCA_EXPORT QString rememberedTokensDirectory();
/// Removes from `directory` what is kept of tokens, and the directory when nothing else is in it.
/// A link to a directory and what is another user's stay as they are. Any thread; waits for the
/// disk.
TRIVEX_QCA_EXPORT void removeRememberedTokens(const QString &directory);

/// Removes what is kept of all tokens, soon, whether a token provider is loaded or not. Any thread;
/// does not wait.
TRIVEX_QCA_EXPORT void forgetTokens();

} // namespace Trivex
