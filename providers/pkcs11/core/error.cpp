// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/core/error.h"

#include <p11-kit/p11-kit.h>

namespace Trivex::Pkcs11 {

namespace {

struct Meaning {
    CK_RV returnValue;
    TokenError::Kind kind;
};

constexpr Meaning Meanings[] = {
    {CKR_OK, TokenError::NoError},
    {CKR_PIN_INCORRECT, TokenError::WrongPin},
    {CKR_PIN_INVALID, TokenError::WrongPin},
    {CKR_PIN_LEN_RANGE, TokenError::WrongPin},
    {CKR_PIN_LOCKED, TokenError::PinLocked},
    {CKR_USER_NOT_LOGGED_IN, TokenError::PinMissing},
    {CKR_USER_PIN_NOT_INITIALIZED, TokenError::PinMissing},
    {CKR_DEVICE_REMOVED, TokenError::TokenRemoved},
    {CKR_TOKEN_NOT_PRESENT, TokenError::TokenRemoved},
    {CKR_SLOT_ID_INVALID, TokenError::TokenRemoved},
    {CKR_CRYPTOKI_NOT_INITIALIZED, TokenError::TokenRemoved},
    {CKR_DEVICE_MEMORY, TokenError::TokenFull},
    {CKR_TOKEN_WRITE_PROTECTED, TokenError::ReadOnly},
    {CKR_SESSION_READ_ONLY, TokenError::ReadOnly},
    {CKR_ACTION_PROHIBITED, TokenError::ReadOnly},
    {CKR_MECHANISM_INVALID, TokenError::NotSupported},
    {CKR_MECHANISM_PARAM_INVALID, TokenError::NotSupported},
    {CKR_FUNCTION_NOT_SUPPORTED, TokenError::NotSupported},
    {CKR_KEY_SIZE_RANGE, TokenError::NotSupported},
    {CKR_ARGUMENTS_BAD, TokenError::NotSupported},
    {CKR_KEY_TYPE_INCONSISTENT, TokenError::NotSupported},
    {CKR_KEY_FUNCTION_NOT_PERMITTED, TokenError::NotSupported},
    {CKR_CURVE_NOT_SUPPORTED, TokenError::NotSupported},
    {CKR_DOMAIN_PARAMS_INVALID, TokenError::NotSupported},
    {CKR_TEMPLATE_INCONSISTENT, TokenError::NotSupported},
    {CKR_ATTRIBUTE_VALUE_INVALID, TokenError::NotSupported},
    {CKR_KEY_HANDLE_INVALID, TokenError::NotFound},
    {CKR_OBJECT_HANDLE_INVALID, TokenError::NotFound},
    {CKR_FUNCTION_CANCELED, TokenError::Cancelled},
};

constexpr CK_RV SessionEnds[] = {
    CKR_SESSION_HANDLE_INVALID, CKR_SESSION_CLOSED,  CKR_DEVICE_REMOVED,
    CKR_TOKEN_NOT_PRESENT,      CKR_SLOT_ID_INVALID, CKR_CRYPTOKI_NOT_INITIALIZED,
};

} // namespace

Error::Error(CK_RV returnValue, const char *function) noexcept
    : m_kind(kindOf(returnValue))
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

TokenError::Kind kindOf(CK_RV returnValue) noexcept
{
    for (const Meaning &meaning : Meanings) {
        if (meaning.returnValue == returnValue)
            return meaning.kind;
    }
    return TokenError::DeviceFailure;
}

bool endsSession(CK_RV returnValue) noexcept
{
    for (const CK_RV end : SessionEnds) {
        if (end == returnValue)
            return true;
    }
    return false;
}

} // namespace Trivex::Pkcs11
