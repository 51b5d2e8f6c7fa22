// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

namespace Trivex {

/// Why a call of libcrypto's that decrypts by a password has failed: true when the way of
/// encrypting is one that it does not have or can't read, so that no password would do. Empties
/// this thread's queue of errors, which has to hold those of that call alone.
bool isAlgorithmAtFault();

/// The same for a check of integrity.
bool isCheckAtFault();

} // namespace Trivex
