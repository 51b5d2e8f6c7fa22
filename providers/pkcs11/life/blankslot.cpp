// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/blankslot.h"

#include "providers/pkcs11/calls/error.h"
#include "providers/pkcs11/calls/pins.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

namespace Trivex {

using Pkcs11::Error;
using Pkcs11::PinArgument;
using Pkcs11::Session;

namespace {

void make(const Pkcs11::ModulePtr &module, CK_SLOT_ID slot, TokenMaking &making)
{
    CK_UTF8CHAR label[32];
    std::fill(std::begin(label), std::end(label), CK_UTF8CHAR(' '));
    const QByteArray name = making.name.toUtf8();
    if (name.isEmpty() || name.size() > int(sizeof label) || making.pin.isEmpty())
        throw Error(TokenError::PinMissing);
    std::copy(name.cbegin(), name.cend(), std::begin(label));
    const PinArgument pin(making.pin, false);
    // Both PINs are new here.
    Pkcs11::checkSetting((*module)->C_InitToken(slot, pin.text, pin.length, label), "C_InitToken");
    const Session session(module, slot, Session::ReadWrite);
    const Pkcs11::Login login(session, CKU_SO, pin);
    Pkcs11::checkSetting((*module)->C_InitPIN(session.handle(), pin.text, pin.length), "C_InitPIN");
}

} // namespace

bool BlankSlot::isOne(const CK_TOKEN_INFO &info)
{
    static const char model[] = "SoftHSM";
    return !(info.flags & CKF_TOKEN_INITIALIZED)
        && std::memcmp(info.model, model, sizeof model - 1) == 0;
}

BlankSlot::~BlankSlot()
{
    TokenError gone;
    gone.kind = TokenError::TokenRemoved;
    for (const Wish &wish : m_wishes)
        wish.done(gone);
}

void BlankSlot::ask(TokenMaking making, TokenMakingDone done)
{
    const std::lock_guard lock(m_mutex);
    m_wishes.push_back({std::move(making), std::move(done)});
}

bool BlankSlot::serve(const Pkcs11::ModulePtr &module, CK_SLOT_ID slot)
{
    Wish wish;
    {
        const std::lock_guard lock(m_mutex);
        if (m_wishes.empty())
            return false;
        wish = std::move(m_wishes.front());
        m_wishes.pop_front();
    }
    TokenError outcome;
    const auto fail = [&outcome](const Error &error) {
        outcome.kind = error.kind();
        outcome.returnValue = error.returnValue();
        outcome.returnName = Pkcs11::returnValueName(error.returnValue());
    };
    try {
        make(module, slot, wish.making);
    } catch (const Error &error) {
        fail(error);
    } catch (const std::exception &) {
        fail(Error(CKR_HOST_MEMORY, "")); // whoever waits hears of it all the same
    }
    wish.done(outcome);
    return true;
}

} // namespace Trivex
