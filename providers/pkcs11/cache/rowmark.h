// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/tokensexport.h"

#include <QByteArray>

#include <p11-kit/pkcs11.h>

namespace Trivex {

/// What a token tells of itself that changes when objects come or go: its memory, and its versions.
/// Another mark means other objects; the same one proves nothing, because many tokens tell of no
/// memory.
TRIVEX_TOKENS_EXPORT QByteArray rowMark(const CK_TOKEN_INFO &info);

} // namespace Trivex
