// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "providers/pkcs11/calls/returnvalues.h"

#include <exception>

namespace Trivex::Pkcs11 {

/// A PKCS#11 call that failed, or a step of our own that failed before a call. Only the token
/// library throws it and catches it: every job and every thread ends in a handler.
class TRIVEX_TOKENS_EXPORT Error : public std::exception {
public:
    /// A call that returned `returnValue`. `function` has static storage.
    Error(CK_RV returnValue, const char *function) noexcept;
    /// A call whose `returnValue` means something of its own there.
    Error(CK_RV returnValue, const char *function, TokenError::Kind kind) noexcept;
    /// A failure that no call returned, such as a question that nobody answered.
    explicit Error(TokenError::Kind kind) noexcept;

    TokenError::Kind kind() const noexcept { return m_kind; }
    /// CKR_OK when no call failed.
    CK_RV returnValue() const noexcept { return m_returnValue; }
    /// The call's name; empty when no call failed.
    const char *function() const noexcept { return m_function; }
    const char *what() const noexcept override;

private:
    TokenError::Kind m_kind;
    CK_RV m_returnValue = CKR_OK;
    const char *m_function = "";
};

/// Throws an `Error` unless `returnValue` is CKR_OK. `function` has static storage.
void check(CK_RV returnValue, const char *function);

} // namespace Trivex::Pkcs11
