// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/fakes/pkcs11/device.h"

namespace Faulty {

//! Waits or ends the process where the verdict says so, before the real module is called.
void before(const Verdict &verdict);
//! Ends the process where the verdict says so, after the real module was called.
void after(const Verdict &verdict);
//! Writes the call to the log. \p detail follows the subject.
void logCall(Function function, unsigned long subject, CK_RV result, const std::string &detail);

//! What a login's log line says of the user and the PIN: never the PIN itself.
std::string loginDetail(CK_USER_TYPE user, const CK_UTF8CHAR *pin, CK_ULONG length);

inline unsigned long firstOf()
{
    return 0;
}

template <typename First, typename... Rest> unsigned long firstOf(First first, Rest...)
{
    if constexpr (std::is_same_v<First, unsigned long>)
        return first;
    else
        return 0;
}

// The calls that the device has its own answer to; all others go straight to the real module.
template <Function Id, typename... Args>
CK_RV perform(CK_RV (*CK_FUNCTION_LIST::*member)(Args...), Args... args)
{
    Device &device = Device::instance();
    if constexpr (Id == Function::C_GetSlotList)
        return device.slotList(args...);
    else if constexpr (Id == Function::C_GetSlotInfo)
        return device.slotInfo(args...);
    else if constexpr (Id == Function::C_GetTokenInfo)
        return device.tokenInfo(args...);
    else if constexpr (Id == Function::C_OpenSession)
        return device.openSession(args...);
    else if constexpr (Id == Function::C_CloseSession)
        return device.closeSession(args...);
    else if constexpr (Id == Function::C_Login)
        return device.login(args...);
    else if constexpr (Id == Function::C_Finalize)
        return device.finalize(args...);
    else
        return (device.target()->*member)(args...);
}

template <Function Id, typename... Args> std::string detailOf(Args... args)
{
    if constexpr (Id == Function::C_Login)
        return [](CK_SESSION_HANDLE, CK_USER_TYPE user, const CK_UTF8CHAR *pin, CK_ULONG length) {
            return loginDetail(user, pin, length);
        }(args...);
    else
        return {};
}

//! The function that stands in the module's function list for \p member.
template <Function Id, auto member> struct Stub;

template <Function Id, typename... Args, CK_RV (*CK_FUNCTION_LIST::*member)(Args...)>
struct Stub<Id, member> {
    static CK_RV call(Args... args)
    {
        Device &device = Device::instance();
        const unsigned long subject = firstOf(args...);
        const Verdict verdict = device.judge(Id, subject);
        before(verdict);
        CK_RV result = verdict.instead.value_or(CKR_OK);
        if (!verdict.instead) {
            const std::shared_lock<std::shared_mutex> busy(device.busy());
            result = perform<Id, Args...>(member, args...);
        }
        after(verdict);
        if (!verdict.instead && verdict.after)
            result = *verdict.after;
        logCall(Id, subject, result, detailOf<Id>(args...));
        return result;
    }
};

} // namespace Faulty
