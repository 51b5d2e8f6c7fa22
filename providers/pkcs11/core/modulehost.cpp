// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/core/modulehost.h"

#include "providers/pkcs11/core/error.h"
#include "providers/pkcs11/core/tokenservice.h"

#include <QLoggingCategory>

#include <map>
#include <utility>

namespace Trivex {

using Pkcs11::check;
using Pkcs11::Error;

namespace {

constexpr Worker::Milliseconds PollInterval{500};

std::vector<CK_SLOT_ID> slotsWithToken(const Pkcs11::Module &module)
{
    // The list is only brought up to date by a call without a buffer (PKCS#11 2.40, 5.5).
    CK_ULONG count = 0;
    check(module->C_GetSlotList(CK_TRUE, nullptr, &count), "C_GetSlotList");
    std::vector<CK_SLOT_ID> slots(count);
    if (count)
        check(module->C_GetSlotList(CK_TRUE, slots.data(), &count), "C_GetSlotList");
    slots.resize(std::min<size_t>(slots.size(), count));
    return slots;
}

bool isAbsent(CK_RV result)
{
    return Pkcs11::kindOf(result) == TokenError::TokenRemoved || result == CKR_TOKEN_NOT_RECOGNIZED;
}

} // namespace

/// What the host's thread works on; it outlives the host when the module hangs.
struct ModuleHost::State {
    Pkcs11::ModuleSource source;
    Pkcs11::ModulePtr module;
    /// Given up, but still in the hands of its tokens' threads.
    std::weak_ptr<Pkcs11::Module> ending;
    bool complained = false;

    std::mutex mutex;
    bool closed = false;
    std::map<CK_SLOT_ID, TokenPtr> tokens;
    /// Detached at the end; their threads may still be at work.
    std::vector<TokenPtr> leaving;

    /// False while the module can't be initialised anew.
    bool open();
    void giveUp();
    void lookAt(CK_SLOT_ID slot);
    void lookAtToken(CK_SLOT_ID slot, const CK_TOKEN_INFO &info);
    void removeAllBut(const std::vector<CK_SLOT_ID> &slots);
    TokenPtr tokenIn(CK_SLOT_ID slot);
    void add(CK_SLOT_ID slot, const TokenPtr &token);
    void remove(CK_SLOT_ID slot);
    std::vector<TokenPtr> close();
};

bool ModuleHost::State::open()
{
    if (module)
        return true;
    // Initialised before its end it would only count one user more, and stay what it is.
    if (!ending.expired())
        return false;
    module = Pkcs11::Module::open(source);
    complained = false;
    return true;
}

void ModuleHost::State::giveUp()
{
    removeAllBut({});
    ending = module;
    module.reset();
}

TokenPtr ModuleHost::State::tokenIn(CK_SLOT_ID slot)
{
    const std::lock_guard lock(mutex);
    const auto found = tokens.find(slot);
    return found == tokens.end() ? nullptr : found->second;
}

void ModuleHost::State::add(CK_SLOT_ID slot, const TokenPtr &token)
{
    {
        const std::lock_guard lock(mutex);
        if (!closed) {
            tokens[slot] = token;
            return;
        }
        leaving.push_back(token);
    }
    TokenService::instance().detach(token);
}

void ModuleHost::State::remove(CK_SLOT_ID slot)
{
    TokenPtr token;
    {
        const std::lock_guard lock(mutex);
        token.swap(tokens[slot]);
        tokens.erase(slot);
    }
    if (token)
        TokenService::instance().detach(token);
}

std::vector<TokenPtr> ModuleHost::State::close()
{
    const std::lock_guard lock(mutex);
    closed = true;
    std::vector<TokenPtr> all;
    for (const auto &[slot, token] : tokens)
        all.push_back(token);
    tokens.clear();
    leaving.insert(leaving.end(), all.begin(), all.end());
    return all;
}

void ModuleHost::State::removeAllBut(const std::vector<CK_SLOT_ID> &slots)
{
    std::vector<CK_SLOT_ID> gone;
    {
        const std::lock_guard lock(mutex);
        for (const auto &[slot, token] : tokens) {
            if (std::find(slots.begin(), slots.end(), slot) == slots.end())
                gone.push_back(slot);
        }
    }
    for (const CK_SLOT_ID slot : gone)
        remove(slot);
}

void ModuleHost::State::lookAt(CK_SLOT_ID slot)
{
    CK_TOKEN_INFO info = {};
    const CK_RV result = (*module)->C_GetTokenInfo(slot, &info);
    if (result == CKR_OK)
        lookAtToken(slot, info);
    else if (isAbsent(result))
        remove(slot);
    // Other failures pass: the next look tells more.
}

void ModuleHost::State::lookAtToken(CK_SLOT_ID slot, const CK_TOKEN_INFO &info)
{
    auto &service = TokenService::instance();
    const TokenPtr known = tokenIn(slot);
    if (known && known->storeId() == identityOf(info).storeId) {
        service.publishFlags(known, info);
        return;
    }
    remove(slot);
    if (!(info.flags & CKF_TOKEN_INITIALIZED))
        return;
    const auto choice = source.isTrust ? CertificateChoice::Trusted : CertificateChoice::All;
    if (const TokenPtr token = service.attach(module, slot, info, choice))
        add(slot, token);
}

ModuleHost::ModuleHost(Pkcs11::ModuleSource source)
    : m_state(std::make_shared<State>())
{
    m_state->source = std::move(source);
}

ModuleHost::~ModuleHost()
{
    close();
}

void ModuleHost::start()
{
    TokenService::instance().expect(m_state->source.key);
    m_worker.start(PollInterval, [state = m_state] { poll(*state); });
    m_worker.post([state = m_state] { poll(*state); });
}

void ModuleHost::poll(State &state)
{
    try {
        if (!state.open())
            return;
        const auto slots = slotsWithToken(*state.module);
        state.removeAllBut(slots);
        for (const CK_SLOT_ID slot : slots)
            state.lookAt(slot);
    } catch (const Error &error) {
        if (!std::exchange(state.complained, true))
            qWarning("PKCS#11 module %s: %s: %s", qUtf8Printable(state.source.key),
                     error.function(), error.what());
        // Initialised anew at the next look. Of a module in another process any failure to list the
        // slots is the end of that process: p11-kit starts another one with C_Initialize only.
        if (state.source.isRemote() || error.returnValue() == CKR_CRYPTOKI_NOT_INITIALIZED)
            state.giveUp();
    }
    TokenService::instance().fulfil(state.source.key);
}

void ModuleHost::close()
{
    m_worker.stop();
    for (const TokenPtr &token : m_state->close())
        TokenService::instance().detach(token);
}

void ModuleHost::join(Worker::Deadline deadline)
{
    m_worker.join(deadline);
    std::vector<TokenPtr> leaving;
    {
        const std::lock_guard lock(m_state->mutex);
        leaving.swap(m_state->leaving);
    }
    for (const TokenPtr &token : leaving)
        token->join(deadline);
}

} // namespace Trivex
