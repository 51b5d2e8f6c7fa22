// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/fakes/pkcs11/control.h"

#include <map>
#include <mutex>
#include <set>
#include <shared_mutex>
#include <string>
#include <vector>

namespace Faulty {

//! What is to happen to one call.
struct Verdict {
    unsigned long milliseconds = 0;
    std::optional<std::string> hold; //!< waits for another control file than the one of that stamp
    bool kill = false;
    bool killAfter = false;
    std::optional<CK_RV> instead; //!< returned without calling the real module
    std::optional<CK_RV> after; //!< returned after calling the real module
    std::optional<unsigned long> report; //!< the count, length or handle that the caller gets
    bool reportsChange = false; //!< `report` is added to the true one
};

/*! The device as the control file describes it, in front of the real module. All members may be
 * called from any thread.
 */
class Device {
public:
    static Device &instance();

    //! The real module's functions; null when it can't be loaded.
    CK_FUNCTION_LIST *target() const { return m_target; }

    //! Reads the control file if it changed and decides about one call. \p subject is the slot or
    //! the session that the call names.
    Verdict judge(Function function, unsigned long subject);

    //! Waits until the control file has another stamp.
    void awaitControl(const std::string &before) const;

    //! Whether the control file gives GOST keys that habit.
    bool hasGostHabit(const std::string &habit) const;

    //! The mechanisms that the token does not know.
    std::set<CK_MECHANISM_TYPE> hiddenMechanisms() const;

    //! Held (shared) while the real module works, so that a removal never closes a session under
    //! it.
    std::shared_mutex &busy() { return m_busy; }

    CK_RV slotList(CK_BBOOL tokenPresent, CK_SLOT_ID *slots, CK_ULONG *count);
    CK_RV slotInfo(CK_SLOT_ID slot, CK_SLOT_INFO *info);
    CK_RV tokenInfo(CK_SLOT_ID slot, CK_TOKEN_INFO *info);
    CK_RV sessionInfo(CK_SESSION_HANDLE session, CK_SESSION_INFO *info);
    CK_RV openSession(CK_SLOT_ID slot, CK_FLAGS flags, void *application, CK_NOTIFY notify,
                      CK_SESSION_HANDLE *session);
    CK_RV closeSession(CK_SESSION_HANDLE session);
    //! So many sessions the caller has open now, of all tokens.
    size_t openSessions() const;
    CK_RV login(CK_SESSION_HANDLE session, CK_USER_TYPE user, CK_UTF8CHAR *pin, CK_ULONG length);
    CK_RV setPin(CK_SESSION_HANDLE session, CK_UTF8CHAR *oldPin, CK_ULONG oldLength,
                 CK_UTF8CHAR *newPin, CK_ULONG newLength);
    CK_RV initPin(CK_SESSION_HANDLE session, CK_UTF8CHAR *pin, CK_ULONG length);
    CK_RV initToken(CK_SLOT_ID slot, CK_UTF8CHAR *pin, CK_ULONG length, CK_UTF8CHAR *label);
    //! The lies about these attributes, one each; empty when all is to be told as it is.
    std::vector<std::optional<Lie>> liesAbout(const CK_ATTRIBUTE *attributes, CK_ULONG count);
    CK_RV initialize(void *given);
    CK_RV finalize(void *reserved);

private:
    struct Slot {
        CK_SLOT_ID id;
        std::string label;
    };

    Device();
    void reload();
    std::vector<Slot> readSlots() const;
    bool isRemoved(CK_SLOT_ID slot) const;
    std::string labelOf(CK_SLOT_ID slot) const;
    void countReplug();
    bool isReplugOut() const;
    std::optional<CK_SLOT_ID> slotOf(Function function, unsigned long subject) const;
    std::optional<CK_RV> stateResult(Function function, unsigned long subject) const;
    void applyRules(Function function, unsigned long subject, Verdict *verdict);
    std::set<CK_SLOT_ID> slotsOfCall(const std::optional<CK_SLOT_ID> &slot) const;
    void dropSessions(std::unique_lock<std::mutex> *lock);
    void endLogins(std::unique_lock<std::mutex> *lock);
    void countPin(CK_SLOT_ID slot, CK_RV result);
    CK_FLAGS pinFlags(CK_SLOT_ID slot) const;
    unsigned long triesLeft(CK_SLOT_ID slot) const;

    mutable std::mutex m_mutex;
    std::shared_mutex m_busy;
    CK_FUNCTION_LIST *m_target = nullptr;
    std::string m_controlPath;
    std::string m_controlStamp;
    Script m_script;
    std::vector<Slot> m_slots;
    std::set<CK_SLOT_ID> m_takenAway; //!< by a "remove-at" rule
    std::set<CK_SLOT_ID> m_ending; //!< whose sessions end before the call
    std::set<CK_SLOT_ID> m_loggedOut; //!< whose logins end before the call
    unsigned long m_replugCalls = 0; //!< since the order to go and come
    unsigned long m_grown = 0; //!< slots without a token that "slots-grow" has added
    std::map<CK_SESSION_HANDLE, CK_SLOT_ID> m_sessions;
    std::map<CK_SESSION_HANDLE, CK_SLOT_ID> m_deadSessions;
    std::map<CK_SLOT_ID, unsigned long> m_wrongPins;
};

} // namespace Faulty
