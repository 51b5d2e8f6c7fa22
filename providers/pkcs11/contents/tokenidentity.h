// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/tokensexport.h"

#include <QString>

#include <p11-kit/pkcs11.h>

namespace Trivex {

/// Who a token is, in words, and the id under which it is known as a key store.
struct TokenIdentity {
    QString storeId; ///< RFC 7512 URI of the token: the same wherever and whenever it is plugged in
    QString label;
    QString manufacturer;
    QString model;
    QString serial;
};

TRIVEX_TOKENS_EXPORT TokenIdentity identityOf(const CK_TOKEN_INFO &info);

} // namespace Trivex
