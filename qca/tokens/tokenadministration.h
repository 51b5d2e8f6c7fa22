// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/secret.h"
#include "qca/questions/cancellation.h"
#include "qca/tokens/tokens.h"

#include <functional>

namespace Trivex {

/// Work on a token itself instead of on what it holds (PKCS#11 2.40, 5.5 and 5.6). All PINs were
/// typed for this one task: each goes to the token once. On a token with a keypad they are empty,
/// and the reader asks for them.
struct TokenAdministration {
    enum Kind {
        ChangePin, ///< the user's; `pin` is the old one
        ChangeOfficerPin, ///< the administrator's; `pin` is the old one
        SetPin, ///< the user's first one, or a new one for a locked one; `pin` is the
                ///< administrator's
        Initialise, ///< makes the token anew, with nothing on it; `pin` is the administrator's
    };

    Kind kind = ChangePin;
    Secret pin;
    Secret newPin;
    QString name; ///< to initialise: up to 32 bytes in UTF-8
    /// True if the person who typed the PIN knows that a wrong one locks it.
    bool mayBeLastTry = false;
};

/// How it has ended.
struct TokenAdministrationResult {
    TokenError error;
    /// To initialise: the token is empty, even where `error` says that something failed after it.
    bool isEmptied = false;
};

/// Called once, on any thread. The error is published nowhere else.
using TokenAdministrationDone = std::function<void(const TokenAdministrationResult &)>;

/// Starts the task on the token of the store `keyStoreId` and returns; `done` follows, perhaps
/// before that. The result names the task for `cancelTokenTask`; it is null when no token provider
/// is loaded, or the store is none of its own: nothing happens then. Thread-safe.
TRIVEX_QCA_EXPORT CancellationPtr startTokenAdministration(const QString &keyStoreId,
                                                           TokenAdministration task,
                                                           TokenAdministrationDone done);

/// Publishes that PINs of that token are different from now on, so that nobody hands out an old
/// one; thread-safe.
TRIVEX_QCA_EXPORT void publishPinChange(const QString &keyStoreId);

} // namespace Trivex
