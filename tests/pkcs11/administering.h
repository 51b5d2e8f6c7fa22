// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/tokens/tokenadministration.h"

namespace TrivexTest {

Trivex::Secret secret(const QByteArray &text);

/// A change of that kind with its PINs.
Trivex::TokenAdministration administration(Trivex::TokenAdministration::Kind kind,
                                           const QByteArray &pin, const QByteArray &newPin);

/// Starts `task` at the token and waits for its end in an event loop. `*started`, if given, is what
/// cancels it. Its error is `NotFound` where it does not start or does not end in half a minute.
Trivex::TokenAdministrationResult administer(const QString &storeId,
                                             Trivex::TokenAdministration task,
                                             Trivex::CancellationPtr *started = nullptr);

} // namespace TrivexTest
