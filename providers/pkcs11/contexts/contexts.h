// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/tokensexport.h"
#include "providers/pkcs11/life/modulewatch.h"

#include <QtCrypto>

namespace Trivex {

// What both token providers use. The tokens are those of the process, because a login belongs to
// the process.

/// The contexts that work on tokens, by QCA's names of their types: "keystorelist", "rsa", "ec".
/// Null for any other. The caller owns it.
TRIVEX_TOKENS_EXPORT QCA::Provider::Context *createTokenContext(QCA::Provider *provider,
                                                                const QString &type);

/// Serves the adapter by `provider`, which is loaded. Null when it is being unloaded: lets all
/// tokens go, as `TokenService::stop`.
TRIVEX_TOKENS_EXPORT void setTokenProvider(QCA::Provider *provider);

/// See `TokenService::configure`.
TRIVEX_TOKENS_EXPORT void configureTokens(const TokenSettings &settings);

} // namespace Trivex
