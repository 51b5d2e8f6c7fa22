// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/calls/error.h"

#include <p11-kit/p11-kit.h>

namespace Trivex::Pkcs11 {

Error::Error(CK_RV returnValue, const char *function) noexcept
    : m_kind(kindOf(returnValue))
    , m_returnValue(returnValue)
    , m_function(function)
{
}

Error::Error(CK_RV returnValue, const char *function, TokenError::Kind kind) noexcept
    : m_kind(kind)
    , m_returnValue(returnValue)
    , m_function(function)
{
}

Error::Error(TokenError::Kind kind) noexcept
    : m_kind(kind)
{
}

const char *Error::what() const noexcept
{
    return m_returnValue == CKR_OK ? "operation ended" : p11_kit_strerror(m_returnValue);
}

void check(CK_RV returnValue, const char *function)
{
    if (returnValue != CKR_OK)
        throw Error(returnValue, function);
}

} // namespace Trivex::Pkcs11
