// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/tokenflags.h"

#include "providers/pkcs11/contents/tokenidentity.h"

#include <tuple>

namespace Trivex {

namespace {

PinState pinStateOf(CK_FLAGS flags)
{
    if (flags & CKF_USER_PIN_LOCKED)
        return PinState::Locked;
    if (flags & CKF_USER_PIN_FINAL_TRY)
        return PinState::FinalTry;
    if (flags & CKF_USER_PIN_COUNT_LOW)
        return PinState::CountLow;
    // A missing PIN means something only if the token says when it wants a login. A keypad asks by
    // itself.
    constexpr CK_FLAGS Relevant =
        CKF_LOGIN_REQUIRED | CKF_USER_PIN_INITIALIZED | CKF_PROTECTED_AUTHENTICATION_PATH;
    return (flags & Relevant) == CKF_LOGIN_REQUIRED ? PinState::NotSet : PinState::Normal;
}

/// Nobody has set it only where the whole token is as it was made: an initialised one got it then,
/// whether it has a user's PIN by now or not.
PinState officerPinStateOf(CK_FLAGS flags)
{
    if (flags & CKF_SO_PIN_LOCKED)
        return PinState::Locked;
    if (flags & CKF_SO_PIN_FINAL_TRY)
        return PinState::FinalTry;
    if (flags & CKF_SO_PIN_COUNT_LOW)
        return PinState::CountLow;
    return flags & (CKF_TOKEN_INITIALIZED | CKF_USER_PIN_INITIALIZED) ? PinState::Normal
                                                                      : PinState::NotSet;
}

/// 0 for what is no length of a PIN.
int pinLength(CK_ULONG told)
{
    constexpr CK_ULONG Longest = 4096;
    return told <= Longest ? int(told) : 0;
}

} // namespace

TokenFlags flagsOf(const CK_TOKEN_INFO &info)
{
    TokenFlags flags;
    flags.needsLogin = info.flags & CKF_LOGIN_REQUIRED;
    flags.hasUserPin = info.flags & CKF_USER_PIN_INITIALIZED;
    flags.pinMayBeEmpty = info.ulMinPinLen == 0;
    flags.hasPinPad = info.flags & CKF_PROTECTED_AUTHENTICATION_PATH;
    flags.readOnly = info.flags & CKF_WRITE_PROTECTED;
    flags.pinState = pinStateOf(info.flags);
    flags.officerPinState = officerPinStateOf(info.flags);
    flags.pinToBeChanged = info.flags & CKF_USER_PIN_TO_BE_CHANGED;
    flags.shortestPin = pinLength(info.ulMinPinLen);
    flags.longestPin = pinLength(info.ulMaxPinLen);
    if (flags.longestPin < flags.shortestPin)
        flags.longestPin = 0;
    return flags;
}

bool isUsable(const CK_TOKEN_INFO &info)
{
    if (info.flags & CKF_TOKEN_INITIALIZED)
        return true;
    const TokenFlags flags = flagsOf(info);
    return flags.needsLogin && flags.pinMayBeEmpty && flags.longestPin > 0
        && !identityOf(info).label.trimmed().isEmpty();
}

bool applyFlags(const TokenFlags &flags, TokenStatus *status)
{
    const auto told = [](TokenStatus &one) {
        return std::tie(one.pinState, one.officerPinState, one.hasPinPad, one.pinToBeChanged,
                        one.pinMayBeEmpty, one.shortestPin, one.longestPin);
    };
    TokenStatus before = *status;
    status->pinState = flags.pinState;
    status->officerPinState = flags.officerPinState;
    status->hasPinPad = flags.hasPinPad;
    status->pinToBeChanged = flags.pinToBeChanged;
    status->pinMayBeEmpty = flags.pinMayBeEmpty;
    status->shortestPin = flags.shortestPin;
    status->longestPin = flags.longestPin;
    return told(before) != told(*status);
}

} // namespace Trivex
