// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/fakes/pkcs11/device.h"

#include "tests/fakes/pkcs11/names.h"
#include "tests/fakes/pkcs11/spylog.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <dlfcn.h>
#include <fstream>
#include <iterator>
#include <sys/stat.h>
#include <thread>
#include <utility>

namespace Faulty {
namespace {

// Above all that the real module numbers in order; it knows none of them.
constexpr CK_SLOT_ID FirstGrownSlot = 1UL << 62;

std::string environment(const char *name, const char *fallback)
{
    const char *value = std::getenv(name);
    return value && *value ? value : fallback;
}

// The real module stays loaded: its sessions outlive any scope of ours.
CK_FUNCTION_LIST *loadTarget()
{
    const std::string path = environment("TRIVEX_FAULTY_TARGET", TRIVEX_FAULTY_DEFAULT_TARGET);
    void *library = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    auto entry = library
        ? reinterpret_cast<CK_C_GetFunctionList>(::dlsym(library, "C_GetFunctionList"))
        : nullptr;
    CK_FUNCTION_LIST *list = nullptr;
    if (!entry || entry(&list) != CKR_OK)
        writeLog("error no module at " + path);
    return list;
}

// Size, inode and time together tell a new file from an old one within a clock tick.
std::string fileStamp(const std::string &path)
{
    struct stat status { };
    if (path.empty() || ::stat(path.c_str(), &status) != 0)
        return {};
    return std::to_string(status.st_mtim.tv_sec) + '.' + std::to_string(status.st_mtim.tv_nsec)
        + '/' + std::to_string(status.st_ino) + '/' + std::to_string(status.st_size);
}

std::string readFile(const std::string &path)
{
    std::ifstream stream(path);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string trimmed(const CK_UTF8CHAR *text, size_t length)
{
    while (length > 0 && text[length - 1] == ' ')
        --length;
    return {reinterpret_cast<const char *>(text), length};
}

bool writes(Function function)
{
    static const std::set<Function> writers = {
        Function::C_CreateObject,      Function::C_CopyObject,  Function::C_DestroyObject,
        Function::C_SetAttributeValue, Function::C_GenerateKey, Function::C_GenerateKeyPair,
        Function::C_UnwrapKey,
    };
    return writers.count(function) > 0;
}

bool takesSpace(Function function)
{
    return writes(function) && function != Function::C_DestroyObject;
}

} // namespace

Device &Device::instance()
{
    static Device device;
    return device;
}

Device::Device()
    : m_target(loadTarget())
    , m_controlPath(environment("TRIVEX_FAULTY_CONTROL", ""))
{
}

void Device::awaitControl(const std::string &before) const
{
    constexpr std::chrono::milliseconds Pause{2};
    while (fileStamp(m_controlPath) == before)
        std::this_thread::sleep_for(Pause);
}

std::vector<Device::Slot> Device::readSlots() const
{
    CK_ULONG count = 0;
    std::vector<CK_SLOT_ID> ids;
    if (m_target->C_GetSlotList(CK_FALSE, nullptr, &count) == CKR_OK) {
        ids.resize(count);
        if (m_target->C_GetSlotList(CK_FALSE, ids.data(), &count) != CKR_OK)
            count = 0;
        ids.resize(count);
    }
    std::vector<Slot> slots;
    for (const CK_SLOT_ID id : ids) {
        CK_TOKEN_INFO info{};
        const bool known = m_target->C_GetTokenInfo(id, &info) == CKR_OK;
        slots.push_back({id, known ? trimmed(info.label, sizeof info.label) : std::string()});
    }
    return slots;
}

void Device::reload()
{
    const std::string stamp = fileStamp(m_controlPath);
    if (stamp == m_controlStamp)
        return;
    m_controlStamp = stamp;
    m_script = parseScript(readFile(m_controlPath));
    m_takenAway.clear();
    m_grown = 0;
    m_replugCalls = 0;
    if (m_script.tries == 0)
        m_wrongPins.clear();
    for (const std::string &line : m_script.errors)
        writeLog("error control line: " + line);
}

void Device::countReplug()
{
    const unsigned long last = 2 * m_script.removals * m_script.removalCalls;
    if (m_replugCalls < last && ++m_replugCalls == last)
        writeLog("replugged " + std::to_string(m_script.removals) + " times");
}

// They are in before the first time, and after the last one.
bool Device::isReplugOut() const
{
    return m_script.removals > 0 && (m_replugCalls / m_script.removalCalls) % 2 == 1;
}

bool Device::isRemoved(CK_SLOT_ID slot) const
{
    if (m_script.allRemoved || isReplugOut() || m_takenAway.count(slot) > 0)
        return true;
    for (size_t i = 0; i < m_slots.size(); ++i) {
        if (m_slots[i].id == slot)
            return m_script.removed.count(std::to_string(i + 1)) > 0
                || (!m_slots[i].label.empty() && m_script.removed.count(m_slots[i].label) > 0);
    }
    return false;
}

std::string Device::labelOf(CK_SLOT_ID slot) const
{
    const auto found = std::find_if(m_slots.begin(), m_slots.end(),
                                    [slot](const Slot &one) { return one.id == slot; });
    return found == m_slots.end() ? std::string() : found->label;
}

std::optional<CK_SLOT_ID> Device::slotOf(Function function, unsigned long subject) const
{
    if (functionKind(function) == Kind::Slot)
        return subject;
    const auto session = m_sessions.find(subject);
    if (functionKind(function) == Kind::Session && session != m_sessions.end())
        return session->second;
    return std::nullopt;
}

std::optional<CK_RV> Device::stateResult(Function function, unsigned long subject) const
{
    const Kind kind = functionKind(function);
    if (kind == Kind::Session && m_deadSessions.count(subject) > 0)
        return isRemoved(m_deadSessions.at(subject)) ? CKR_DEVICE_REMOVED
                                                     : CKR_SESSION_HANDLE_INVALID;
    if (kind == Kind::Slot && function != Function::C_GetSlotInfo && isRemoved(subject))
        return CKR_TOKEN_NOT_PRESENT;
    const auto slot = kind == Kind::Session ? slotOf(function, subject) : std::nullopt;
    if (slot && m_script.sick.count(labelOf(*slot)) > 0)
        return CKR_DEVICE_ERROR;
    if (m_script.deadSlots && kind == Kind::Slot && subject >= FirstGrownSlot)
        return CKR_DEVICE_ERROR;
    const bool isBroken =
        m_script.broken && kind != Kind::General && m_script.brokenKind.value_or(kind) == kind;
    if (isBroken)
        return m_script.brokenResult;
    if (m_script.readOnly && writes(function))
        return CKR_TOKEN_WRITE_PROTECTED;
    if (m_script.full && takesSpace(function))
        return CKR_DEVICE_MEMORY;
    return std::nullopt;
}

void Device::applyRules(Function function, unsigned long subject, Verdict *verdict)
{
    for (Rule &rule : m_script.rules) {
        if (!rule.hits(function))
            continue;
        const std::optional<CK_SLOT_ID> slot = slotOf(function, subject);
        switch (rule.action) {
        case Action::Fail:
            verdict->instead = rule.result;
            break;
        case Action::FailAfter:
            verdict->after = rule.result;
            break;
        case Action::Delay:
            verdict->milliseconds += rule.milliseconds;
            break;
        case Action::Hold:
            verdict->hold = m_controlStamp;
            break;
        case Action::Remove:
            if (slot)
                m_takenAway.insert(*slot);
            break;
        case Action::EndSessions:
            m_ending = slotsOfCall(slot);
            break;
        case Action::FinalTry:
            m_script.finalTry = true;
            break;
        case Action::Logout:
            m_loggedOut = slotsOfCall(slot);
            break;
        case Action::Report:
            verdict->report = rule.value;
            verdict->reportsChange = rule.isChange;
            break;
        case Action::Kill:
            verdict->kill = true;
            break;
        case Action::KillAfter:
            verdict->killAfter = true;
            break;
        }
    }
}

// That of the call; all that have sessions for a call that names none.
std::set<CK_SLOT_ID> Device::slotsOfCall(const std::optional<CK_SLOT_ID> &slot) const
{
    if (slot)
        return {*slot};
    std::set<CK_SLOT_ID> all;
    for (const auto &session : m_sessions)
        all.insert(session.second);
    return all;
}

void Device::endLogins(std::unique_lock<std::mutex> *lock)
{
    const std::set<CK_SLOT_ID> slots = std::exchange(m_loggedOut, {});
    std::map<CK_SLOT_ID, CK_SESSION_HANDLE> sessions;
    for (const auto &session : m_sessions) {
        if (slots.count(session.second) > 0)
            sessions[session.second] = session.first;
    }
    lock->unlock();
    for (const auto &session : sessions) {
        const std::unique_lock<std::shared_mutex> aloneLock(m_busy);
        m_target->C_Logout(session.second);
    }
    lock->lock();
}

// The sessions of a token that has gone are closed in the real module too, so that its login does
// not survive the removal.
void Device::dropSessions(std::unique_lock<std::mutex> *lock)
{
    std::set<CK_SLOT_ID> gone;
    const std::set<CK_SLOT_ID> ending = std::exchange(m_ending, {});
    for (auto it = m_sessions.begin(); it != m_sessions.end();) {
        if (!isRemoved(it->second) && ending.count(it->second) == 0) {
            ++it;
            continue;
        }
        gone.insert(it->second);
        m_deadSessions.insert(*it);
        it = m_sessions.erase(it);
    }
    if (gone.empty())
        return;
    lock->unlock();
    {
        const std::unique_lock<std::shared_mutex> aloneLock(m_busy);
        for (const CK_SLOT_ID slot : gone)
            m_target->C_CloseAllSessions(slot);
    }
    lock->lock();
}

Verdict Device::judge(Function function, unsigned long subject)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    reload();
    countReplug();
    Verdict verdict;
    applyRules(function, subject, &verdict);
    if (m_slots.empty())
        m_slots = readSlots();
    dropSessions(&lock);
    endLogins(&lock);
    const std::optional<CK_RV> state = stateResult(function, subject);
    if (state)
        verdict.instead = state;
    return verdict;
}

bool Device::hasGostHabit(const std::string &habit) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_script.gostHabits.count(habit) > 0;
}

std::set<CK_MECHANISM_TYPE> Device::hiddenMechanisms() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_script.hidden;
}

CK_RV Device::slotList(CK_BBOOL tokenPresent, CK_SLOT_ID *slots, CK_ULONG *count)
{
    if (!count)
        return CKR_ARGUMENTS_BAD;
    CK_ULONG known = 0;
    const CK_RV result = m_target->C_GetSlotList(CK_FALSE, nullptr, &known);
    if (result != CKR_OK)
        return result;
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_slots = readSlots();
    std::vector<CK_SLOT_ID> shown;
    for (const Slot &slot : m_slots) {
        const bool within = m_script.slotLimit == 0 || shown.size() < m_script.slotLimit;
        if (within && (!tokenPresent || !isRemoved(slot.id)))
            shown.push_back(slot.id);
    }
    if (m_script.slotsGrow)
        ++m_grown;
    for (unsigned long i = 0; i < m_grown + m_script.moreSlots; ++i)
        shown.push_back(FirstGrownSlot + i);
    const CK_ULONG room = *count;
    *count = m_script.slotCount.value_or(shown.size());
    if (!slots)
        return CKR_OK;
    if (room < shown.size())
        return CKR_BUFFER_TOO_SMALL;
    std::copy(shown.begin(), shown.end(), slots);
    return CKR_OK;
}

CK_RV Device::slotInfo(CK_SLOT_ID slot, CK_SLOT_INFO *info)
{
    const CK_RV result = m_target->C_GetSlotInfo(slot, info);
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (result == CKR_OK) {
        info->flags |= CKF_REMOVABLE_DEVICE;
        if (isRemoved(slot))
            info->flags &= ~static_cast<CK_FLAGS>(CKF_TOKEN_PRESENT);
    }
    return result;
}

unsigned long Device::triesLeft(CK_SLOT_ID slot) const
{
    const auto wrong = m_wrongPins.find(slot);
    const unsigned long used = wrong == m_wrongPins.end() ? 0 : wrong->second;
    return m_script.tries > used ? m_script.tries - used : 0;
}

CK_FLAGS Device::pinFlags(CK_SLOT_ID slot) const
{
    CK_FLAGS flags = 0;
    const bool counted = m_script.tries > 0;
    const unsigned long left = triesLeft(slot);
    if (m_script.countLow || (counted && left < m_script.tries))
        flags |= CKF_USER_PIN_COUNT_LOW;
    if (m_script.finalTry || (counted && left == 1))
        flags |= CKF_USER_PIN_FINAL_TRY;
    if (m_script.locked || (counted && left == 0))
        flags |= CKF_USER_PIN_LOCKED;
    return flags;
}

CK_RV Device::tokenInfo(CK_SLOT_ID slot, CK_TOKEN_INFO *info)
{
    const CK_RV result = m_target->C_GetTokenInfo(slot, info);
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (result != CKR_OK)
        return result;
    info->flags |= pinFlags(slot);
    if (m_script.sameNames && !m_slots.empty() && info->flags & CKF_TOKEN_INITIALIZED) {
        CK_TOKEN_INFO first{};
        if (m_target->C_GetTokenInfo(m_slots.front().id, &first) == CKR_OK) {
            std::copy(std::begin(first.label), std::end(first.label), info->label);
            std::copy(std::begin(first.serialNumber), std::end(first.serialNumber),
                      info->serialNumber);
        }
    }
    if (m_script.noSerial)
        std::fill(std::begin(info->serialNumber), std::end(info->serialNumber), ' ');
    if (m_script.otherToken)
        std::fill(std::begin(info->serialNumber), std::end(info->serialNumber), '7');
    if (m_script.readOnly)
        info->flags |= CKF_WRITE_PROTECTED;
    if (m_script.noLoginFlag)
        info->flags &= ~static_cast<CK_FLAGS>(CKF_LOGIN_REQUIRED);
    if (m_script.noPinFlag)
        info->flags &= ~static_cast<CK_FLAGS>(CKF_USER_PIN_INITIALIZED);
    if (m_script.pinPad)
        info->flags |= CKF_PROTECTED_AUTHENTICATION_PATH;
    if (m_script.noShortestPin)
        info->ulMinPinLen = 0;
    if (m_script.toBeChanged)
        info->flags |= CKF_USER_PIN_TO_BE_CHANGED;
    if (m_script.officerFinalTry)
        info->flags |= CKF_SO_PIN_FINAL_TRY;
    if (m_script.officerLocked)
        info->flags |= CKF_SO_PIN_LOCKED;
    return result;
}

CK_RV Device::sessionInfo(CK_SESSION_HANDLE session, CK_SESSION_INFO *info)
{
    const CK_RV result = m_target->C_GetSessionInfo(session, info);
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (result == CKR_OK && m_script.noLoginState)
        info->state = info->flags & CKF_RW_SESSION ? CKS_RW_PUBLIC_SESSION : CKS_RO_PUBLIC_SESSION;
    return result;
}

CK_RV Device::openSession(CK_SLOT_ID slot, CK_FLAGS flags, void *application, CK_NOTIFY notify,
                          CK_SESSION_HANDLE *session)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_script.readOnly && (flags & CKF_RW_SESSION))
            return CKR_TOKEN_WRITE_PROTECTED;
    }
    const CK_RV result = m_target->C_OpenSession(slot, flags, application, notify, session);
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (result == CKR_OK) {
        m_deadSessions.erase(*session);
        m_sessions[*session] = slot;
    }
    return result;
}

CK_RV Device::closeSession(CK_SESSION_HANDLE session)
{
    const CK_RV result = m_target->C_CloseSession(session);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_sessions.erase(session);
    return result;
}

size_t Device::openSessions() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_sessions.size();
}

CK_RV Device::login(CK_SESSION_HANDLE session, CK_USER_TYPE user, CK_UTF8CHAR *pin, CK_ULONG length)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const auto found = m_sessions.find(session);
    const CK_SLOT_ID slot = found == m_sessions.end() ? CK_UNAVAILABLE_INFORMATION : found->second;
    const bool counts = user != CKU_SO;
    if (counts && (pinFlags(slot) & CKF_USER_PIN_LOCKED))
        return CKR_PIN_LOCKED;
    std::string typed = m_script.pinPad.value_or(std::string());
    const bool usesPad = m_script.pinPad && !pin;
    lock.unlock();
    const CK_RV result = usesPad
        ? m_target->C_Login(session, user, reinterpret_cast<CK_UTF8CHAR *>(&typed[0]), typed.size())
        : m_target->C_Login(session, user, pin, length);
    lock.lock();
    if (counts)
        countPin(slot, result);
    return result;
}

void Device::countPin(CK_SLOT_ID slot, CK_RV result)
{
    if (result == CKR_PIN_INCORRECT)
        ++m_wrongPins[slot];
    else if (result == CKR_OK)
        m_wrongPins.erase(slot);
}

CK_RV Device::setPin(CK_SESSION_HANDLE session, CK_UTF8CHAR *oldPin, CK_ULONG oldLength,
                     CK_UTF8CHAR *newPin, CK_ULONG newLength)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const auto found = m_sessions.find(session);
    const CK_SLOT_ID slot = found == m_sessions.end() ? CK_UNAVAILABLE_INFORMATION : found->second;
    CK_SESSION_INFO info{};
    const bool counts =
        m_target->C_GetSessionInfo(session, &info) != CKR_OK || info.state != CKS_RW_SO_FUNCTIONS;
    if (counts && (pinFlags(slot) & CKF_USER_PIN_LOCKED))
        return CKR_PIN_LOCKED;
    std::string typed = m_script.pinPad.value_or(std::string());
    std::string typedNew = m_script.newOnPinPad;
    if (m_script.pinPad && !oldPin) {
        oldPin = reinterpret_cast<CK_UTF8CHAR *>(&typed[0]);
        oldLength = typed.size();
    }
    if (m_script.pinPad && !newPin) {
        newPin = reinterpret_cast<CK_UTF8CHAR *>(&typedNew[0]);
        newLength = typedNew.size();
    }
    lock.unlock();
    const CK_RV result = m_target->C_SetPIN(session, oldPin, oldLength, newPin, newLength);
    lock.lock();
    if (counts)
        countPin(slot, result);
    return result;
}

CK_RV Device::initPin(CK_SESSION_HANDLE session, CK_UTF8CHAR *pin, CK_ULONG length)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    std::string typed = m_script.newOnPinPad;
    const bool usesPad = m_script.pinPad && !pin;
    const auto found = m_sessions.find(session);
    if (found != m_sessions.end())
        m_wrongPins.erase(found->second);
    lock.unlock();
    return usesPad
        ? m_target->C_InitPIN(session, reinterpret_cast<CK_UTF8CHAR *>(&typed[0]), typed.size())
        : m_target->C_InitPIN(session, pin, length);
}

CK_RV Device::initToken(CK_SLOT_ID slot, CK_UTF8CHAR *pin, CK_ULONG length, CK_UTF8CHAR *label)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    std::string typed = m_script.pinPad.value_or(std::string());
    const bool usesPad = m_script.pinPad && !pin;
    if (m_script.readOnly)
        return CKR_TOKEN_WRITE_PROTECTED;
    lock.unlock();
    return usesPad ? m_target->C_InitToken(slot, reinterpret_cast<CK_UTF8CHAR *>(&typed[0]),
                                           typed.size(), label)
                   : m_target->C_InitToken(slot, pin, length, label);
}

std::vector<std::optional<Lie>> Device::liesAbout(const CK_ATTRIBUTE *attributes, CK_ULONG count)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_script.lies.empty())
        return {};
    std::vector<std::optional<Lie>> lies(count);
    bool isLying = false;
    for (CK_ULONG i = 0; i < count; ++i) {
        for (LieRule &rule : m_script.lies) {
            if (rule.hits(attributes[i].type))
                lies[i] = rule.lie;
        }
        isLying = isLying || lies[i];
    }
    return isLying ? lies : std::vector<std::optional<Lie>>();
}

CK_RV Device::initialize(void *given)
{
    if (!given)
        return m_target->C_Initialize(nullptr);
    // What was meant for this module is nothing to the real one.
    CK_C_INITIALIZE_ARGS arguments = *static_cast<const CK_C_INITIALIZE_ARGS *>(given);
    arguments.pReserved = nullptr;
    return m_target->C_Initialize(&arguments);
}

CK_RV Device::finalize(void *reserved)
{
    const CK_RV result = m_target->C_Finalize(reserved);
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (result == CKR_OK) {
        m_script.broken = false;
        m_sessions.clear();
        m_deadSessions.clear();
        m_slots.clear();
    }
    return result;
}

} // namespace Faulty
