// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/fakes/pkcs11/functions.h"
#include "tests/fakes/pkcs11/lies.h"

#include <p11-kit/pkcs11.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Faulty {

//! What a rule does to the call that it hits.
enum class Action {
    Fail, //!< return \c result without calling the real module
    FailAfter, //!< call the real module, then return \c result
    Delay, //!< wait \c milliseconds, then go on
    Hold, //!< wait until the control file is another one, then go on
    Remove, //!< take the slot of the call away
    EndSessions, //!< close all sessions of the call's token, and with them its login
    FinalTry, //!< leave the token one try from that call on
    Logout, //!< end the login of the call's token, whose sessions live on
    Kill, //!< end the process at once, as a crash would
    KillAfter, //!< the same once the real module has done its work
    Report //!< the count, length or handle that the call gives is \c value, or off by it
};

//! One line of the control file that is about a call.
struct Rule {
    Action action = Action::Fail;
    std::optional<Function> function; //!< none: every function of \c kind
    std::optional<Kind> kind; //!< none and no function: every function
    unsigned long first = 1; //!< the matching call that is hit, counted from 1
    bool onwards = false; //!< that call and all after it
    CK_RV result = CKR_OK;
    unsigned long milliseconds = 0;
    unsigned long value = 0;
    bool isChange = false; //!< \c value is added to what the real module gives
    unsigned long seen = 0; //!< matching calls so far

    bool matches(Function call) const;
    //! Counts a matching call; true when the rule hits it.
    bool hits(Function call);
};

//! Everything that a control file says. A new reading replaces the old one whole.
struct Script {
    std::vector<Rule> rules;
    std::vector<LieRule> lies;
    std::set<std::string> removed; //!< slots by number from 1 in the real module's order, or label
    bool allRemoved = false;
    unsigned long slotLimit = 0; //!< 0: all slots
    std::optional<unsigned long> slotCount; //!< what C_GetSlotList says, whatever it lists
    unsigned long moreSlots = 0; //!< behind the real ones, without a token
    bool deadSlots = false; //!< those more answer nothing but that their device fails
    bool slotsGrow = false; //!< each list is one slot longer than the one before
    bool broken = false; //!< until the module is finalised
    std::optional<Kind> brokenKind; //!< which calls; none: those about slots and sessions
    CK_RV brokenResult = CKR_OK;
    std::set<std::string> sick; //!< tokens by label, in whose sessions every call fails
    unsigned long tries = 0; //!< wrong PINs until the lock; 0: the real module's own counting
    bool readOnly = false;
    bool full = false;
    bool locked = false;
    bool countLow = false;
    bool finalTry = false;
    bool noLoginFlag = false;
    bool noLoginState = false; //!< no session says that somebody is logged in
    bool noPinFlag = false; //!< says that the user has no PIN, whatever a login does
    bool otherToken = false; //!< the tokens have other serial numbers
    bool sameNames = false; //!< every token has the names of the first one
    bool noSerial = false; //!< no token has a serial number
    unsigned long removals = 0; //!< the tokens go and come so many times
    unsigned long removalCalls = 1; //!< calls between going and coming
    bool noShortestPin = false; //!< says that a PIN may have no characters
    bool toBeChanged = false; //!< says that the user's PIN has to be changed
    bool officerFinalTry = false;
    bool officerLocked = false;
    std::optional<std::string> pinPad; //!< the PIN that is typed on the reader
    std::string newOnPinPad; //!< the one that is typed there as the new one
    std::set<CK_MECHANISM_TYPE> hidden; //!< mechanisms that the token does not know
    std::set<std::string> gostHabits; //!< what the token does its own way with GOST keys
    std::vector<std::string> errors; //!< lines that were not understood
};

//! Reads the control language of the README.
Script parseScript(const std::string &text);

} // namespace Faulty
