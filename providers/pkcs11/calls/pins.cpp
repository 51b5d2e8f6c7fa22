// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/calls/pins.h"

#include "providers/pkcs11/calls/error.h"

namespace Trivex::Pkcs11 {

namespace {

/// An empty PIN is one, too: no module may take it for the wish to be asked.
CK_UTF8CHAR *textOf(Secret &pin)
{
    static CK_UTF8CHAR nothing[1] = {};
    return pin.isEmpty() ? nothing : reinterpret_cast<CK_UTF8CHAR *>(pin.data());
}

} // namespace

PinArgument::PinArgument(Secret &pin, bool hasPinPad)
    : text(hasPinPad ? nullptr : textOf(pin))
    , length(hasPinPad ? 0 : CK_ULONG(pin.size()))
{
}

void checkSetting(CK_RV result, const char *function)
{
    if (result == CKR_PIN_INVALID || result == CKR_PIN_LEN_RANGE)
        throw Error(result, function, TokenError::NewPinRefused);
    check(result, function);
}

Login::Login(const Session &session, CK_USER_TYPE user, PinArgument pin)
    : m_session(session)
{
    const CK_RV result = session.module()->C_Login(session.handle(), user, pin.text, pin.length);
    m_isOurs = result != CKR_USER_ALREADY_LOGGED_IN;
    if (m_isOurs)
        check(result, "C_Login");
}

Login::~Login()
{
    if (m_isOurs)
        m_session.module()->C_Logout(m_session.handle());
}

} // namespace Trivex::Pkcs11
