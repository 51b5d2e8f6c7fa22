// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/questions/operationowner.h"

#include <QString>
#include <QtCrypto>

namespace Trivex {

/// The kinds of questions. 0 is `QCA::Event::Password`. Stock QCA does not have 2 and 4; handlers
/// get them as a password event of our own.
enum QuestionKind : int {
    PasswordQuestion = 0,
    KeyStoreIdQuestion = 2,
    EntryNameQuestion = 4,
};

/// The task that a token works at. For all but the last two it may ask for its PIN.
enum class Purpose { Sign, Decrypt, Write, Remove, Generate, Look, Export, SetPin, Initialise };

/// The state of a PIN by the flags of CK_TOKEN_INFO (PKCS#11 2.40, 3.2). `NotSet`: the user has no
/// PIN yet.
enum class PinState { NotSet, Normal, CountLow, FinalTry, Locked };

/// A question of our own providers, as a prompt can explain it to its user.
struct QuestionInfo {
    int kind = PasswordQuestion;
    Purpose purpose = Purpose::Sign;
    QString keyStoreId;
    QString tokenName;
    PinState pinState = PinState::Normal;
    /// A PIN that was typed for an earlier operation must not be handed in: the next wrong one
    /// locks the token.
    bool needsTypedPin = false;
    /// The PIN that was typed before for the same operation was wrong.
    bool wasWrong = false;
    /// When set, the one handler that this question is for; the others stand back.
    const QCA::EventHandler *addressee = nullptr;
    /// The object that has started the operation that asks; null when it is unknown.
    OperationOwnerPtr owner;
    /// Nobody waits for the answer any more.
    bool withdrawn = false;
    /// Names the question until it is over; 0 for none.
    quintptr ticket = 0;
};

} // namespace Trivex
