// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "providers/pkcs11/operations/administration.h"

#include "providers/pkcs11/calls/error.h"
#include "providers/pkcs11/calls/pins.h"
#include "qca/questions/storedanswers.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <utility>

namespace Trivex {

using Pkcs11::check;
using Pkcs11::checkSetting;
using Pkcs11::Error;
using Pkcs11::Login;
using Pkcs11::PinArgument;
using Pkcs11::Session;

namespace {

/// Shared by both sides of one task: the token's thread, and the caller who hears of the end.
struct Task {
    TokenAdministration asked;
    // A token that is pulled out ends the task while its thread still works at it.
    std::atomic<Remaking *> remaking = nullptr; ///< set while the token is made anew
    std::atomic_bool isEmptied = false;
};

/// Throws where the PIN must not be tried. Read just before: other programs use up tries, too.
void checkTries(PinState state, const Task &task)
{
    if (state == PinState::Locked)
        throw Error(CKR_PIN_LOCKED, "C_GetTokenInfo");
    if (state == PinState::FinalTry && !task.asked.mayBeLastTry)
        throw Error(TokenError::LastTry);
}

/// Throws where a PIN is missing that the reader does not ask for.
void checkGiven(const TokenFlags &flags, const Task &task)
{
    if (flags.hasPinPad)
        return;
    // Two old PINs may be empty: that of an administrator when nobody has set it, as with a new
    // database of NSS, and that of a user when the token opens without it.
    const bool isFirst =
        task.asked.kind == TokenAdministration::SetPin && flags.officerPinState == PinState::NotSet;
    const bool isOpen =
        task.asked.kind == TokenAdministration::ChangePin && flags.hasUserPin && !flags.needsLogin;
    const bool mayBeEmpty = (isFirst || isOpen) && flags.pinMayBeEmpty;
    if (task.asked.newPin.isEmpty() || (task.asked.pin.isEmpty() && !mayBeEmpty))
        throw Error(TokenError::PinMissing);
    const int length = task.asked.newPin.size();
    if (length < flags.shortestPin || (flags.longestPin > 0 && length > flags.longestPin))
        throw Error(TokenError::NewPinRefused);
}

CK_RV callSetPin(const Session &session, Task &task, bool hasPinPad)
{
    const PinArgument before(task.asked.pin, hasPinPad);
    const PinArgument after(task.asked.newPin, hasPinPad);
    return session.module()->C_SetPIN(session.handle(), before.text, before.length, after.text,
                                      after.length);
}

void callInitPin(const Session &session, Task &task, bool hasPinPad)
{
    const PinArgument pin(task.asked.newPin, hasPinPad);
    checkSetting(session.module()->C_InitPIN(session.handle(), pin.text, pin.length), "C_InitPIN");
}

void changePin(TokenConnection &connection, Task &task)
{
    const TokenFlags flags = connection.flags();
    checkTries(flags.pinState, task);
    checkGiven(flags, task);
    const Session session = connection.openPlain(Session::ReadWrite);
    connection.checkCancelled();
    CK_RV result = callSetPin(session, task, flags.hasPinPad);
    // Some tokens want a login first. They have not looked at the PIN: no try is used up by that.
    if (result == CKR_USER_NOT_LOGGED_IN) {
        const Login login(session, CKU_USER, PinArgument(task.asked.pin, flags.hasPinPad));
        result = callSetPin(session, task, flags.hasPinPad);
    }
    checkSetting(result, "C_SetPIN");
}

/// Runs `work` with the administrator logged in.
template <class Work> void asOfficer(TokenConnection &connection, Task &task, const Work &work)
{
    const TokenFlags flags = connection.flags();
    checkTries(flags.officerPinState, task);
    checkGiven(flags, task);
    connection.leave();
    const Session session = connection.openPlain(Session::ReadWrite);
    connection.checkCancelled();
    const Login login(session, CKU_SO, PinArgument(task.asked.pin, flags.hasPinPad));
    work(session, flags.hasPinPad);
}

void changeOfficerPin(TokenConnection &connection, Task &task)
{
    asOfficer(connection, task, [&](const Session &session, bool hasPinPad) {
        checkSetting(callSetPin(session, task, hasPinPad), "C_SetPIN");
    });
}

void setPin(TokenConnection &connection, Task &task)
{
    asOfficer(connection, task, [&](const Session &session, bool hasPinPad) {
        callInitPin(session, task, hasPinPad);
    });
}

/// True where the token has refused before it did anything.
bool isRefusal(CK_RV result)
{
    static constexpr CK_RV Refusals[] = {CKR_PIN_INCORRECT,  CKR_PIN_LOCKED,
                                         CKR_PIN_INVALID,    CKR_PIN_LEN_RANGE,
                                         CKR_SESSION_EXISTS, CKR_TOKEN_WRITE_PROTECTED,
                                         CKR_ARGUMENTS_BAD,  CKR_FUNCTION_NOT_SUPPORTED};
    return std::find(std::begin(Refusals), std::end(Refusals), result) != std::end(Refusals);
}

void callInitToken(TokenConnection &connection, Task &task, bool hasPinPad)
{
    CK_UTF8CHAR label[32];
    std::fill(std::begin(label), std::end(label), CK_UTF8CHAR(' '));
    const QByteArray name = task.asked.name.toUtf8();
    if (name.isEmpty() || name.size() > int(sizeof label))
        throw Error(TokenError::NotSupported);
    std::copy(name.cbegin(), name.cend(), std::begin(label));
    const PinArgument pin(task.asked.pin, hasPinPad);
    connection.leave();
    connection.checkCancelled();
    connection.remaking().begin();
    task.remaking = &connection.remaking();
    const CK_RV result =
        connection.module()->C_InitToken(connection.slot(), pin.text, pin.length, label);
    if (isRefusal(result)) {
        task.remaking = nullptr;
        connection.remaking().end(true);
    }
    check(result, "C_InitToken");
}

void initialise(TokenConnection &connection, Task &task)
{
    connection.checkWritable();
    const TokenFlags flags = connection.flags();
    checkTries(flags.officerPinState, task);
    checkGiven(flags, task);
    callInitToken(connection, task, flags.hasPinPad);
    task.isEmptied = true;
    const Session session = connection.openPlain(Session::ReadWrite);
    const Login login(session, CKU_SO, PinArgument(task.asked.pin, flags.hasPinPad));
    callInitPin(session, task, flags.hasPinPad);
}

void work(TokenConnection &connection, Task &task)
{
    switch (task.asked.kind) {
    case TokenAdministration::ChangePin:
        return changePin(connection, task);
    case TokenAdministration::ChangeOfficerPin:
        return changeOfficerPin(connection, task);
    case TokenAdministration::SetPin:
        return setPin(connection, task);
    case TokenAdministration::Initialise:
        return initialise(connection, task);
    }
}

/// No old PIN is handed out from now on, whoever kept it.
void forgetPins(const QString &keyStoreId)
{
    while (takeStoredAnswers(keyStoreId)) { }
    publishPinChange(keyStoreId);
}

} // namespace

CancellationPtr startAdministration(TokenTable &tokens, const QString &keyStoreId,
                                    TokenAdministration asked, TokenAdministrationDone done)
{
    if (!tokens.store(keyStoreId))
        return {};
    const Purpose purpose =
        asked.kind == TokenAdministration::Initialise ? Purpose::Initialise : Purpose::SetPin;
    const auto task = std::make_shared<Task>();
    task->asked = std::move(asked);
    Operation operation = Operation::attended(purpose, keyStoreId);
    const CancellationPtr cancellation = operation.cancellation();
    tokens.post(
        std::move(operation),
        [task](TokenConnection &connection, Operation &) { work(connection, *task); },
        [task, keyStoreId, done = std::move(done)](const TokenError &error) {
            if (error.kind == TokenError::NoError || task->isEmptied)
                forgetPins(keyStoreId);
            done({error, task->isEmptied});
            // Last: the token is taken in anew from now on, and what still ran on it would end.
            if (Remaking *remaking = task->remaking)
                remaking->end(false);
        });
    return cancellation;
}

} // namespace Trivex
