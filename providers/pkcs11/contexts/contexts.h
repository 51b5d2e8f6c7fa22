// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/tokensexport.h"

#include <QtCrypto>

namespace Trivex {

/// The contexts that work on tokens, by QCA's names of their types: "keystorelist", "rsa", "ec".
/// Null for any other. The caller owns it.
TRIVEX_TOKENS_EXPORT QCA::Provider::Context *createTokenContext(QCA::Provider *provider,
                                                                const QString &type);

/// The provider that owns the keys which are looked up by their public half; set by it while it is
/// loaded.
TRIVEX_TOKENS_EXPORT void setTokenProvider(QCA::Provider *provider);
QCA::Provider *tokenProvider();

} // namespace Trivex
