// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/tokensexport.h"

#include <QString>

#include <p11-kit/pkcs11.h>

namespace Trivex {

/// The names of a token (PKCS#11 2.40, 3.2) and the id of its key store.
struct TokenIdentity {
    QString uri; ///< RFC 7512 URI of the token: the same in each slot and at any time
    QString storeId; ///< the same, but for another token of the same names beside it
    QString label;
    QString manufacturer;
    QString model;
    QString serial;
};

TRIVEX_TOKENS_EXPORT TokenIdentity identityOf(const CK_TOKEN_INFO &info);

/// The id of the store for a token of that URI in `slot`, where another slot has one, too.
QString storeIdInSlot(const QString &uri, CK_SLOT_ID slot);

} // namespace Trivex
