// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/fakes/pkcs11/device.h"

namespace Faulty {

//! What a log line says of a PIN: " pin=none", "empty" or "given".
std::string pinDetail(const CK_UTF8CHAR *pin, CK_ULONG length);
//! What a login's log line says of the user and the PIN: never the PIN itself.
std::string loginDetail(CK_USER_TYPE user, const CK_UTF8CHAR *pin, CK_ULONG length);
//! The parameters that C_Initialize gets: " reserved=a=b"; nothing without them.
std::string reservedDetail(const void *given);
//! The types that a call asks for: " attributes=0x11,0x102".
std::string attributesDetail(const CK_ATTRIBUTE *attributes, CK_ULONG count);

//! What a call's log line says beside its subject.
template <Function Id, typename... Args> std::string detailOf(Args... args)
{
    if constexpr (Id == Function::C_Login)
        return [](CK_SESSION_HANDLE, CK_USER_TYPE user, const CK_UTF8CHAR *pin, CK_ULONG length) {
            return loginDetail(user, pin, length);
        }(args...);
    else if constexpr (Id == Function::C_SetPIN)
        return [](CK_SESSION_HANDLE, const CK_UTF8CHAR *oldPin, CK_ULONG oldLength,
                  const CK_UTF8CHAR *, CK_ULONG) { return pinDetail(oldPin, oldLength); }(args...);
    else if constexpr (Id == Function::C_InitPIN)
        return [](CK_SESSION_HANDLE, const CK_UTF8CHAR *pin, CK_ULONG length) {
            return pinDetail(pin, length);
        }(args...);
    else if constexpr (Id == Function::C_InitToken)
        return [](CK_SLOT_ID, const CK_UTF8CHAR *pin, CK_ULONG length, const CK_UTF8CHAR *) {
            return pinDetail(pin, length);
        }(args...);
    else if constexpr (Id == Function::C_GetAttributeValue)
        return [](CK_SESSION_HANDLE, CK_OBJECT_HANDLE, const CK_ATTRIBUTE *attributes,
                  CK_ULONG count) { return attributesDetail(attributes, count); }(args...);
    else if constexpr (Id == Function::C_OpenSession || Id == Function::C_CloseSession)
        return " open=" + std::to_string(Device::instance().openSessions());
    else if constexpr (Id == Function::C_Initialize)
        return reservedDetail(args...);
    else
        return {};
}

} // namespace Faulty
