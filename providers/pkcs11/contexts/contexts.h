// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/tokensexport.h"
#include "providers/pkcs11/life/modulewatch.h"

#include <QtCrypto>

namespace Trivex {

// Both token providers use these functions and share the tokens of the process, because a login
// belongs to the process.

/// The contexts that work on tokens, by QCA's names of their types: "keystorelist", "rsa", "ec".
/// Null for any other. The caller owns it.
TRIVEX_TOKENS_EXPORT QCA::Provider::Context *createTokenContext(QCA::Provider *provider,
                                                                const QString &type);

/// Connects the adapter to `provider`, which QCA has loaded. Null before QCA unloads it: this
/// closes all tokens as `TokenService::stop` does.
TRIVEX_TOKENS_EXPORT void setTokenProvider(QCA::Provider *provider);

/// See `TokenService::configure`.
TRIVEX_TOKENS_EXPORT void configureTokens(const TokenSettings &settings);

} // namespace Trivex
