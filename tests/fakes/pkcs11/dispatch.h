// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/fakes/pkcs11/details.h"
#include "tests/fakes/pkcs11/device.h"
#include "tests/fakes/pkcs11/gostlayer.h"
#include "tests/fakes/pkcs11/hiding.h"

#include <tuple>

namespace Faulty {

//! Waits or ends the process where the verdict says so, before the real module is called. A wait is
//! logged when it begins.
void before(Function function, const Verdict &verdict);
//! Ends the process where the verdict says so, after the real module was called.
void after(const Verdict &verdict);
//! Writes the call to the log. \p detail follows the subject.
void logCall(Function function, unsigned long subject, CK_RV result, const std::string &detail);

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

//! The member of the GOST layer that answers a function; none for most.
template <Function Id> constexpr std::nullptr_t gostAnswer = nullptr;
#define G(name, member) template <> constexpr auto gostAnswer<Function::name> = &GostLayer::member
G(C_GetMechanismList, mechanismList);
G(C_GetMechanismInfo, mechanismInfo);
G(C_CreateObject, createObject);
G(C_DestroyObject, destroyObject);
G(C_GetAttributeValue, getAttributes);
G(C_SetAttributeValue, setAttributes);
G(C_FindObjectsInit, findInit);
G(C_FindObjects, find);
G(C_FindObjectsFinal, findFinal);
G(C_GenerateKeyPair, generatePair);
G(C_DigestInit, digestInit);
G(C_Digest, digest);
G(C_SignInit, signInit);
G(C_Sign, sign);
#undef G

//! Passes a call on to the real module, by way of the GOST layer where there is one.
template <Function Id, typename... Args>
CK_RV passOn(CK_RV (*CK_FUNCTION_LIST::*member)(Args...), Args... args)
{
    if constexpr (!std::is_null_pointer_v<decltype(gostAnswer<Id>)>) {
        if (GostLayer *layer = GostLayer::instance())
            return (layer->*gostAnswer<Id>)(args...);
    }
    return (Device::instance().target()->*member)(args...);
}

//! What is read of an object, before any lie.
inline CK_RV trueAttributes(CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object,
                            CK_ATTRIBUTE *attributes, CK_ULONG count)
{
    return passOn<Function::C_GetAttributeValue>(&CK_FUNCTION_LIST::C_GetAttributeValue, session,
                                                 object, attributes, count);
}

inline CK_RV getAttributes(Device &device, CK_SESSION_HANDLE session, CK_OBJECT_HANDLE object,
                           CK_ATTRIBUTE *attributes, CK_ULONG count)
{
    const auto lies = device.liesAbout(attributes, count);
    if (lies.empty())
        return trueAttributes(session, object, attributes, count);
    CK_FUNCTION_LIST truth = *device.target();
    truth.C_GetAttributeValue = trueAttributes;
    return tellAttributes(&truth, session, object, attributes, count, lies);
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
    else if constexpr (Id == Function::C_GetSessionInfo)
        return device.sessionInfo(args...);
    else if constexpr (Id == Function::C_OpenSession)
        return device.openSession(args...);
    else if constexpr (Id == Function::C_CloseSession)
        return device.closeSession(args...);
    else if constexpr (Id == Function::C_Login)
        return device.login(args...);
    else if constexpr (Id == Function::C_SetPIN)
        return device.setPin(args...);
    else if constexpr (Id == Function::C_InitPIN)
        return device.initPin(args...);
    else if constexpr (Id == Function::C_InitToken)
        return device.initToken(args...);
    else if constexpr (Id == Function::C_GetAttributeValue)
        return getAttributes(device, args...);
    else if constexpr (Id == Function::C_GetMechanismList)
        return tellMechanisms(device.hiddenMechanisms(), passOn<Id, Args...>, member, args...);
    else if constexpr (Id == Function::C_Initialize)
        return device.initialize(args...);
    else if constexpr (Id == Function::C_Finalize)
        return device.finalize(args...);
    else
        return passOn<Id, Args...>(member, args...);
}

//! Puts the ordered value where the call gives its count, length or handles: in all that it gives
//! last.
template <Function Id, typename... Args> void report(const Verdict &verdict, Args... args)
{
    const auto put = [&verdict](unsigned long *number) {
        *number = *verdict.report + (verdict.reportsChange ? *number : 0);
    };
    const auto arguments = std::make_tuple(args...);
    constexpr size_t Last = sizeof...(Args) - 1;
    if constexpr (std::is_same_v<std::tuple_element_t<Last, decltype(arguments)>,
                                 unsigned long *const>) {
        if (std::get<Last>(arguments))
            put(std::get<Last>(arguments));
        if constexpr (Id == Function::C_GenerateKeyPair)
            put(std::get<Last - 1>(arguments));
    }
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
        before(Id, verdict);
        CK_RV result = verdict.instead.value_or(CKR_OK);
        if (!verdict.instead) {
            const std::shared_lock<std::shared_mutex> busyLock(device.busy());
            result = isHidden<Id>(device.hiddenMechanisms(), args...)
                ? CK_RV(CKR_MECHANISM_INVALID)
                : perform<Id, Args...>(member, args...);
        }
        after(verdict);
        if (verdict.report)
            report<Id>(verdict, args...);
        if (!verdict.instead && verdict.after)
            result = *verdict.after;
        logCall(Id, subject, result, detailOf<Id>(args...));
        return result;
    }
};

} // namespace Faulty
