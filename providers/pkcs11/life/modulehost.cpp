// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/life/modulehost.h"

#include "providers/pkcs11/calls/error.h"
#include "providers/pkcs11/contents/tokentext.h"
#include "providers/pkcs11/life/blankslot.h"
#include "providers/pkcs11/life/restartpause.h"

#include <QLoggingCategory>

#include <map>
#include <optional>
#include <utility>

namespace Trivex {

using Pkcs11::check;
using Pkcs11::Error;

namespace {

constexpr Worker::Milliseconds PollInterval{500};
/// Between two starts of a module that can't run.
constexpr Worker::Milliseconds LongestStartPause{60 * 1000};
/// Between two restarts of a module whose device fails. Long, because each ends the logins of the
/// module's other tokens, which may be well.
constexpr Worker::Milliseconds LongestFaultPause{60 * 60 * 1000};

/// More than any machine has, network readers with thousands of partitions included; a larger count
/// is an error of the module.
constexpr CK_ULONG MostSlots = 16384;
/// Tokens may come between the two calls for the list, but not for ever.
constexpr int ListTries = 8;
/// Room for those that do; twice as much after each try that was too small.
constexpr CK_ULONG SpareSlots = 16;

/// The slots with tokens; nothing while the list changes faster than it can be read.
std::optional<std::vector<CK_SLOT_ID>> slotsWithToken(const Pkcs11::Module &module)
{
    CK_ULONG spare = SpareSlots;
    for (int attempt = 0; attempt < ListTries; ++attempt, spare *= 2) {
        // The list is only brought up to date by a call without a buffer (PKCS#11 2.40, 5.5).
        CK_ULONG count = 0;
        CK_RV result = module->C_GetSlotList(CK_TRUE, nullptr, &count);
        std::vector<CK_SLOT_ID> slots;
        if (result == CKR_OK && count > 0) {
            slots.resize(std::min(count, MostSlots) + spare);
            count = slots.size();
            result = module->C_GetSlotList(CK_TRUE, slots.data(), &count);
        }
        if (result == CKR_BUFFER_TOO_SMALL)
            continue;
        check(result, "C_GetSlotList");
        slots.resize(std::min<size_t>(slots.size(), count));
        return slots;
    }
    return std::nullopt;
}

/// The name of the slot, which people know as that of the reader; empty where it has none.
QString readerOf(const Pkcs11::Module &module, CK_SLOT_ID slot)
{
    CK_SLOT_INFO info = {};
    if (module->C_GetSlotInfo(slot, &info) != CKR_OK)
        return {};
    return paddedText(info.slotDescription);
}

bool isAbsent(CK_RV result)
{
    return Pkcs11::kindOf(result) == TokenError::TokenRemoved || result == CKR_TOKEN_NOT_RECOGNIZED;
}

} // namespace

/// The data of the host's thread. It outlives the host when the module hangs.
struct ModuleHost::State {
    State(Pkcs11::ModuleSource source, TokenTable &table)
        : source(std::move(source))
        , table(table)
    {
    }

    const Pkcs11::ModuleSource source;
    TokenTable &table;
    // Used on the host's thread only.
    Pkcs11::ModulePtr module;
    RestartPause startPause{LongestStartPause};
    RestartPause faultPause{LongestFaultPause};
    bool complained = false;
    /// Where the next software token can be made, while there is such a slot.
    std::shared_ptr<BlankSlot> blank;
    std::optional<CK_SLOT_ID> blankSlot;

    std::mutex mutex;
    bool closed = false;
    std::map<CK_SLOT_ID, TokenPtr> tokens;

    void poll();
    /// False while the module can't be initialised.
    bool open();
    void look();
    void offerBlank();
    void withdrawBlank();
    void giveUp();
    void noteFailure(const Error &error);
    void restartWhenFaulty();
    CK_RV lookAt(CK_SLOT_ID slot);
    /// `isRemade`: the known token was made anew.
    void lookAtToken(CK_SLOT_ID slot, const CK_TOKEN_INFO &info, bool isRemade);
    void removeAllBut(const std::vector<CK_SLOT_ID> &slots);
    TokenPtr tokenIn(CK_SLOT_ID slot);
    void add(CK_SLOT_ID slot, const TokenPtr &token);
    void remove(CK_SLOT_ID slot);
    /// Whether another slot has a token of the same names.
    bool hasTwin(const QString &uri);
    std::vector<TokenPtr> close();
    bool isClosed();
};

void ModuleHost::State::poll()
{
    try {
        if (open())
            look();
    } catch (const Error &error) {
        noteFailure(error);
    } catch (const std::exception &error) {
        qWarning("PKCS#11 module %s: %s", qUtf8Printable(source.key), error.what());
    }
    if (module)
        restartWhenFaulty();
}

bool ModuleHost::State::open()
{
    // By another host of the same module.
    if (module && module->isGivenUp())
        giveUp();
    if (!module && startPause.isOver(RestartPause::Clock::now())) {
        module = Pkcs11::Module::open(source);
        complained = complained && !module;
    }
    return module != nullptr;
}

void ModuleHost::State::look()
{
    const auto slots = slotsWithToken(*module);
    if (!slots)
        return;
    removeAllBut(*slots);
    blankSlot.reset();
    CK_RV failure = CKR_OK;
    bool answers = false;
    for (const CK_SLOT_ID slot : *slots) {
        const CK_RV result = lookAt(slot);
        answers = answers || result == CKR_OK;
        failure = result == CKR_OK ? failure : result;
    }
    module->health().noteLook(answers ? CKR_OK : failure);
    startPause.works(RestartPause::Clock::now());
    offerBlank();
}

void ModuleHost::State::offerBlank()
{
    if (!blankSlot) {
        withdrawBlank();
        return;
    }
    if (!blank) {
        blank = std::make_shared<BlankSlot>();
        const std::weak_ptr<BlankSlot> weak = blank;
        const auto ask = [weak](TokenMaking making, TokenMakingDone done) {
            TokenError gone;
            gone.kind = TokenError::TokenRemoved;
            if (const auto slot = weak.lock())
                slot->ask(std::move(making), std::move(done));
            else
                done(gone);
        };
        TokenMakers::instance().offer(source.key, ask);
    }
    // The next look takes it in.
    blank->serve(module, *blankSlot);
}

void ModuleHost::State::withdrawBlank()
{
    if (blank)
        TokenMakers::instance().withdraw(source.key);
    blank.reset();
}

void ModuleHost::State::giveUp()
{
    withdrawBlank();
    removeAllBut({});
    module->giveUp();
    module.reset();
}

void ModuleHost::State::noteFailure(const Error &error)
{
    if (!std::exchange(complained, true))
        qWarning("PKCS#11 module %s: %s: %s", qUtf8Printable(source.key), error.function(),
                 error.what());
    // Initialised anew at a later look. Of a module in another process any failure to list the
    // slots is the end of that process: p11-kit starts another one with C_Initialize only.
    const bool hasEnded = source.isRemote() || error.returnValue() == CKR_CRYPTOKI_NOT_INITIALIZED;
    if (module)
        module->health().noteLook(error.returnValue());
    if (module && hasEnded)
        giveUp();
    // A module of this process is asked at each look: that costs little, and what it waits for may
    // come.
    if (source.isRemote())
        startPause.failed(RestartPause::Clock::now());
}

void ModuleHost::State::restartWhenFaulty()
{
    const auto now = RestartPause::Clock::now();
    if (!module->health().needsRestart()) {
        faultPause.works(now);
        return;
    }
    faultPause.interrupt();
    // A daemon behind it was restarted, perhaps: it works again once it is initialised anew.
    if (!module->isOurs() || !faultPause.isOver(now))
        return;
    faultPause.failed(now);
    qWarning("PKCS#11 module %s: its device fails, it is started anew", qUtf8Printable(source.key));
    giveUp();
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
    }
    table.detach(token);
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
        table.detach(token);
}

std::vector<TokenPtr> ModuleHost::State::close()
{
    const std::lock_guard lock(mutex);
    closed = true;
    std::vector<TokenPtr> all;
    for (const auto &[slot, token] : tokens)
        all.push_back(token);
    tokens.clear();
    return all;
}

bool ModuleHost::State::isClosed()
{
    const std::lock_guard lock(mutex);
    return closed;
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

CK_RV ModuleHost::State::lookAt(CK_SLOT_ID slot)
{
    const TokenPtr known = tokenIn(slot);
    const Remaking::Look before = known ? known->remaking().look() : Remaking::Look();
    if (before.isInBetween())
        return CKR_OK;
    CK_TOKEN_INFO info = {};
    const CK_RV result = (*module)->C_GetTokenInfo(slot, &info);
    if (known && known->remaking().hasMoved(before))
        return CKR_OK;
    if (result == CKR_OK)
        lookAtToken(slot, info, before.isOver);
    else if (isAbsent(result))
        remove(slot);
    // Other failures pass: the next look tells more.
    return result;
}

void ModuleHost::State::lookAtToken(CK_SLOT_ID slot, const CK_TOKEN_INFO &info, bool isRemade)
{
    const TokenPtr known = tokenIn(slot);
    const QString uri = identityOf(info).uri;
    const bool isSame = known && known->uri() == uri;
    if (isSame && !isRemade) {
        table.publishFlags(known, info);
        return;
    }
    remove(slot);
    if (known && isRemade && !isSame)
        table.forget(known->storeId());
    if (BlankSlot::isOne(info))
        blankSlot = slot;
    if (!isUsable(info))
        return;
    const auto choice = source.isTrust ? CertificateChoice::Trusted : CertificateChoice::All;
    const QString reader = hasTwin(uri) ? readerOf(*module, slot) : QString();
    if (const TokenPtr token = table.attach(module, {slot, reader}, info, choice))
        add(slot, token);
}

bool ModuleHost::State::hasTwin(const QString &uri)
{
    const std::lock_guard lock(mutex);
    return std::any_of(tokens.begin(), tokens.end(),
                       [&](const auto &one) { return one.second->uri() == uri; });
}

ModuleHost::ModuleHost(Pkcs11::ModuleSource source, TokenTable &tokens, FirstScan &scan)
    : m_scan(scan)
    , m_state(std::make_shared<State>(std::move(source), tokens))
{
}

ModuleHost::~ModuleHost()
{
    close();
}

void ModuleHost::start()
{
    m_scan.expect(m_state->source.key);
    const auto look = [state = m_state, &scan = m_scan] {
        state->poll();
        // The next host of the module has still to look.
        if (!state->isClosed())
            scan.fulfil(state->source.key);
    };
    m_worker.start(PollInterval, look, [state = m_state] {
        state->withdrawBlank();
        state->module.reset();
        Pkcs11::Module::hasLeft(state->source);
    });
    m_isStarted = true;
    m_worker.post(look);
}

void ModuleHost::close()
{
    // Before the thread's last job, which takes it back.
    const bool wasStarted = std::exchange(m_isStarted, false);
    if (wasStarted)
        Pkcs11::Module::leave(m_state->source);
    TokenMakers::instance().withdraw(m_state->source.key);
    m_worker.stop();
    for (const TokenPtr &token : m_state->close())
        m_state->table.detach(token);
    // A module that is not wanted any more is not waited for.
    if (wasStarted)
        m_scan.fulfil(m_state->source.key);
}

} // namespace Trivex
