// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/life/tokentable.h"
#include "qca/tokens/tokenadministration.h"

namespace Trivex {

/// See `startTokenAdministration`.
CancellationPtr startAdministration(TokenTable &tokens, const QString &keyStoreId,
                                    TokenAdministration task, TokenAdministrationDone done);

} // namespace Trivex
