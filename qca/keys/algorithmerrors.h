// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

namespace Trivex {

/// Tells why libcrypto failed to decrypt with a password: true when it does not have or can't read
/// the encryption scheme, so that no password would do. Empties this thread's error queue, which
/// must hold only the errors of that call.
bool isAlgorithmAtFault();

/// The same for a check of integrity.
bool isCheckAtFault();

} // namespace Trivex
