// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/calls/returnvalues.h"

namespace Trivex::Pkcs11 {

namespace {

struct Meaning {
    CK_RV returnValue;
    const char *name;
    TokenError::Kind kind;
};

// By number: p11-kit's header lacks what came with 3.0 and has 0x1b5 to 0x1b9 elsewhere.
constexpr Meaning Meanings[] = {
    {0x0, "CKR_OK", TokenError::NoError},
    {0x1, "CKR_CANCEL", TokenError::Cancelled},
    {0x2, "CKR_HOST_MEMORY", TokenError::DeviceFailure},
    {0x3, "CKR_SLOT_ID_INVALID", TokenError::TokenRemoved},
    {0x5, "CKR_GENERAL_ERROR", TokenError::DeviceFailure},
    {0x6, "CKR_FUNCTION_FAILED", TokenError::DeviceFailure},
    {0x7, "CKR_ARGUMENTS_BAD", TokenError::NotSupported},
    {0x8, "CKR_NO_EVENT", TokenError::DeviceFailure},
    {0x9, "CKR_NEED_TO_CREATE_THREADS", TokenError::DeviceFailure},
    {0xA, "CKR_CANT_LOCK", TokenError::DeviceFailure},
    {0x10, "CKR_ATTRIBUTE_READ_ONLY", TokenError::NotSupported},
    {0x11, "CKR_ATTRIBUTE_SENSITIVE", TokenError::NotSupported},
    {0x12, "CKR_ATTRIBUTE_TYPE_INVALID", TokenError::NotSupported},
    {0x13, "CKR_ATTRIBUTE_VALUE_INVALID", TokenError::NotSupported},
    {0x1B, "CKR_ACTION_PROHIBITED", TokenError::ReadOnly},
    {0x20, "CKR_DATA_INVALID", TokenError::DataRefused},
    {0x21, "CKR_DATA_LEN_RANGE", TokenError::DataRefused},
    {0x30, "CKR_DEVICE_ERROR", TokenError::DeviceFailure},
    {0x31, "CKR_DEVICE_MEMORY", TokenError::TokenFull},
    {0x32, "CKR_DEVICE_REMOVED", TokenError::TokenRemoved},
    {0x40, "CKR_ENCRYPTED_DATA_INVALID", TokenError::DataRefused},
    {0x41, "CKR_ENCRYPTED_DATA_LEN_RANGE", TokenError::DataRefused},
    {0x42, "CKR_AEAD_DECRYPT_FAILED", TokenError::DataRefused},
    {0x50, "CKR_FUNCTION_CANCELED", TokenError::Cancelled},
    {0x51, "CKR_FUNCTION_NOT_PARALLEL", TokenError::DeviceFailure},
    {0x54, "CKR_FUNCTION_NOT_SUPPORTED", TokenError::NotSupported},
    {0x60, "CKR_KEY_HANDLE_INVALID", TokenError::NotFound},
    {0x62, "CKR_KEY_SIZE_RANGE", TokenError::NotSupported},
    {0x63, "CKR_KEY_TYPE_INCONSISTENT", TokenError::NotSupported},
    {0x64, "CKR_KEY_NOT_NEEDED", TokenError::NotSupported},
    {0x65, "CKR_KEY_CHANGED", TokenError::NotFound},
    {0x66, "CKR_KEY_NEEDED", TokenError::NotSupported},
    {0x67, "CKR_KEY_INDIGESTIBLE", TokenError::NotSupported},
    {0x68, "CKR_KEY_FUNCTION_NOT_PERMITTED", TokenError::NotSupported},
    {0x69, "CKR_KEY_NOT_WRAPPABLE", TokenError::NotSupported},
    {0x6A, "CKR_KEY_UNEXTRACTABLE", TokenError::NotSupported},
    {0x70, "CKR_MECHANISM_INVALID", TokenError::NotSupported},
    {0x71, "CKR_MECHANISM_PARAM_INVALID", TokenError::NotSupported},
    {0x82, "CKR_OBJECT_HANDLE_INVALID", TokenError::NotFound},
    {0x90, "CKR_OPERATION_ACTIVE", TokenError::DeviceFailure},
    {0x91, "CKR_OPERATION_NOT_INITIALIZED", TokenError::DeviceFailure},
    {0xA0, "CKR_PIN_INCORRECT", TokenError::WrongPin},
    {0xA1, "CKR_PIN_INVALID", TokenError::WrongPin},
    {0xA2, "CKR_PIN_LEN_RANGE", TokenError::WrongPin},
    {0xA3, "CKR_PIN_EXPIRED", TokenError::PinExpired},
    {0xA4, "CKR_PIN_LOCKED", TokenError::PinLocked},
    {0xB0, "CKR_SESSION_CLOSED", TokenError::DeviceFailure},
    {0xB1, "CKR_SESSION_COUNT", TokenError::TokenInUse},
    {0xB3, "CKR_SESSION_HANDLE_INVALID", TokenError::DeviceFailure},
    {0xB4, "CKR_SESSION_PARALLEL_NOT_SUPPORTED", TokenError::NotSupported},
    {0xB5, "CKR_SESSION_READ_ONLY", TokenError::ReadOnly},
    {0xB6, "CKR_SESSION_EXISTS", TokenError::TokenInUse},
    {0xB7, "CKR_SESSION_READ_ONLY_EXISTS", TokenError::TokenInUse},
    {0xB8, "CKR_SESSION_READ_WRITE_SO_EXISTS", TokenError::TokenInUse},
    {0xC0, "CKR_SIGNATURE_INVALID", TokenError::DataRefused},
    {0xC1, "CKR_SIGNATURE_LEN_RANGE", TokenError::DataRefused},
    {0xD0, "CKR_TEMPLATE_INCOMPLETE", TokenError::NotSupported},
    {0xD1, "CKR_TEMPLATE_INCONSISTENT", TokenError::NotSupported},
    {0xE0, "CKR_TOKEN_NOT_PRESENT", TokenError::TokenRemoved},
    {0xE1, "CKR_TOKEN_NOT_RECOGNIZED", TokenError::DeviceFailure},
    {0xE2, "CKR_TOKEN_WRITE_PROTECTED", TokenError::ReadOnly},
    {0xF0, "CKR_UNWRAPPING_KEY_HANDLE_INVALID", TokenError::NotFound},
    {0xF1, "CKR_UNWRAPPING_KEY_SIZE_RANGE", TokenError::NotSupported},
    {0xF2, "CKR_UNWRAPPING_KEY_TYPE_INCONSISTENT", TokenError::NotSupported},
    {0x100, "CKR_USER_ALREADY_LOGGED_IN", TokenError::DeviceFailure},
    {0x101, "CKR_USER_NOT_LOGGED_IN", TokenError::NotLoggedIn},
    {0x102, "CKR_USER_PIN_NOT_INITIALIZED", TokenError::PinNotSet},
    {0x103, "CKR_USER_TYPE_INVALID", TokenError::NotSupported},
    {0x104, "CKR_USER_ANOTHER_ALREADY_LOGGED_IN", TokenError::TokenInUse},
    {0x105, "CKR_USER_TOO_MANY_TYPES", TokenError::TokenInUse},
    {0x110, "CKR_WRAPPED_KEY_INVALID", TokenError::DataRefused},
    {0x112, "CKR_WRAPPED_KEY_LEN_RANGE", TokenError::DataRefused},
    {0x113, "CKR_WRAPPING_KEY_HANDLE_INVALID", TokenError::NotFound},
    {0x114, "CKR_WRAPPING_KEY_SIZE_RANGE", TokenError::NotSupported},
    {0x115, "CKR_WRAPPING_KEY_TYPE_INCONSISTENT", TokenError::NotSupported},
    {0x120, "CKR_RANDOM_SEED_NOT_SUPPORTED", TokenError::NotSupported},
    {0x121, "CKR_RANDOM_NO_RNG", TokenError::NotSupported},
    {0x130, "CKR_DOMAIN_PARAMS_INVALID", TokenError::NotSupported},
    {0x140, "CKR_CURVE_NOT_SUPPORTED", TokenError::NotSupported},
    {0x150, "CKR_BUFFER_TOO_SMALL", TokenError::DeviceFailure},
    {0x160, "CKR_SAVED_STATE_INVALID", TokenError::DeviceFailure},
    {0x170, "CKR_INFORMATION_SENSITIVE", TokenError::NotSupported},
    {0x180, "CKR_STATE_UNSAVEABLE", TokenError::NotSupported},
    {0x190, "CKR_CRYPTOKI_NOT_INITIALIZED", TokenError::TokenRemoved},
    {0x191, "CKR_CRYPTOKI_ALREADY_INITIALIZED", TokenError::DeviceFailure},
    {0x1A0, "CKR_MUTEX_BAD", TokenError::DeviceFailure},
    {0x1A1, "CKR_MUTEX_NOT_LOCKED", TokenError::DeviceFailure},
    {0x1B0, "CKR_NEW_PIN_MODE", TokenError::PinExpired},
    {0x1B1, "CKR_NEXT_OTP", TokenError::PinExpired},
    {0x1B5, "CKR_EXCEEDED_MAX_ITERATIONS", TokenError::NotSupported},
    {0x1B6, "CKR_FIPS_SELF_TEST_FAILED", TokenError::DeviceFailure},
    {0x1B7, "CKR_LIBRARY_LOAD_FAILED", TokenError::DeviceFailure},
    {0x1B8, "CKR_PIN_TOO_WEAK", TokenError::PinExpired},
    {0x1B9, "CKR_PUBLIC_KEY_INVALID", TokenError::NotSupported},
    {0x200, "CKR_FUNCTION_REJECTED", TokenError::Cancelled},
    {0x201, "CKR_TOKEN_RESOURCE_EXCEEDED", TokenError::TokenInUse},
    {0x202, "CKR_OPERATION_CANCEL_FAILED", TokenError::DeviceFailure},
};

constexpr CK_RV SessionEnds[] = {
    CKR_SESSION_HANDLE_INVALID, CKR_SESSION_CLOSED,  CKR_DEVICE_REMOVED,
    CKR_TOKEN_NOT_PRESENT,      CKR_SLOT_ID_INVALID, CKR_CRYPTOKI_NOT_INITIALIZED,
};

constexpr TokenError::Kind Refusals[] = {
    TokenError::NotSupported,
    TokenError::ReadOnly,
    TokenError::NotLoggedIn,
    TokenError::DataRefused,
};

const Meaning *meaningOf(CK_RV returnValue) noexcept
{
    for (const Meaning &meaning : Meanings) {
        if (meaning.returnValue == returnValue)
            return &meaning;
    }
    return nullptr;
}

} // namespace

TokenError::Kind kindOf(CK_RV returnValue) noexcept
{
    const Meaning *meaning = meaningOf(returnValue);
    return meaning ? meaning->kind : TokenError::DeviceFailure;
}

QString returnValueName(CK_RV returnValue)
{
    if (const Meaning *meaning = meaningOf(returnValue))
        return QString::fromLatin1(meaning->name);
    return QStringLiteral("0x%1").arg(returnValue, 8, 16, QLatin1Char('0'));
}

bool endsSession(CK_RV returnValue) noexcept
{
    for (const CK_RV end : SessionEnds) {
        if (end == returnValue)
            return true;
    }
    return false;
}

bool isRefusal(CK_RV returnValue) noexcept
{
    for (const TokenError::Kind refusal : Refusals) {
        if (refusal == kindOf(returnValue))
            return true;
    }
    return false;
}

} // namespace Trivex::Pkcs11
