// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/questions/operationowner.h"

#include <QString>
#include <QtCrypto>

namespace Trivex {

/// What a question asks for. 0 is `QCA::Event::Password`; 2 and 4 are the kinds that stock QCA does
/// not have and that reach handlers as a password event of our own.
enum QuestionKind : int {
    PasswordQuestion = 0,
    KeyStoreIdQuestion = 2,
    EntryNameQuestion = 4,
};

/// Why a token asks for its PIN.
enum class Purpose { Sign, Decrypt, Write, Remove, Generate };

/// What the token says of its PIN (PKCS#11, CK_TOKEN_INFO flags). `NotSet`: its user has none yet.
enum class PinState { NotSet, Normal, CountLow, FinalTry, Locked };

/// What a prompt can tell its user about a question of our own providers.
struct QuestionInfo {
    int kind = PasswordQuestion;
    Purpose purpose = Purpose::Sign;
    QString keyStoreId;
    QString tokenName;
    PinState pinState = PinState::Normal;
    /// A PIN that was typed for an earlier operation must not be handed in: the next wrong one
    /// locks the token.
    bool needsTypedPin = false;
    /// When set, the one handler that this question is for; the others stand back.
    const QCA::EventHandler *addressee = nullptr;
    /// Who has started the operation that asks; null where that is not known.
    OperationOwnerPtr owner;
    /// Nobody waits for the answer any more.
    bool withdrawn = false;
    /// Names the question until it is over; 0 for none.
    quintptr ticket = 0;
};

} // namespace Trivex
