// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/trivexqcaexport.h"
#include "qca/questions/operationowner.h"

#include <QObject>
#include <QString>
#include <QtCrypto>

#include <optional>

namespace Trivex {

/// What a question asks for. 0 and 1 are `QCA::Event::Type`; 2 and 4 are the kinds that stock QCA
/// does not have and that reach handlers as a password event of our own.
enum QuestionKind : int {
    PasswordQuestion = 0,
    TokenQuestion = 1,
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
    /// Tries left where the token tells, else -1.
    int triesLeft = -1;
    /// A PIN that was typed for an earlier operation must not be handed in: the next wrong one
    /// locks the token.
    bool needsTypedPin = false;
    /// Handlers that hold stored answers stand back.
    bool interactive = true;
    /// When set, the one handler that this question is for; the others stand back.
    const QCA::EventHandler *addressee = nullptr;
    /// Who has started the operation that asks; null where that is not known.
    OperationOwnerPtr owner;
    /// Nobody waits for the answer any more.
    bool withdrawn = false;
    /// Names the question until it is over; 0 for none.
    quintptr ticket = 0;
};

/// What is known about `event`, when it is a question of our own providers that is still open.
/// Nothing for a plain event, whatever its provider calls itself. Thread-safe.
TRIVEX_QCA_EXPORT std::optional<QuestionInfo> questionInfo(const QCA::Event &event);

/// The kind of `event`: that of our own question, or its QCA type. The event must not be null.
TRIVEX_QCA_EXPORT int questionKind(const QCA::Event &event);

/// Ends every open question about the store `keyStoreId` as if it had been rejected; all of them
/// when it is empty. What asks may ask again: see `refuseQuestions`.
TRIVEX_QCA_EXPORT void cancelQuestions(const QString &keyStoreId = QString());

/// Tells prompts about questions that were ended by somebody else.
class TRIVEX_QCA_EXPORT QuestionNotifier : public QObject {
    Q_OBJECT
public:
    /// The one of the process. The signal comes on any thread, so connect queued.
    static QuestionNotifier *instance();

Q_SIGNALS:
    /// The question with this `QuestionInfo::ticket` needs no answer any more.
    void withdrawn(quintptr ticket);

private:
    QuestionNotifier();
};

/// While one lives, questions raised by operations that this thread starts are addressed to
/// `handler` alone, so that two signers, or a signer and a host's prompt, don't answer for each
/// other. `handler` must outlive the operation or be destroyed through QCA's own rules (it rejects
/// what it has not answered).
class TRIVEX_QCA_EXPORT QuestionScope {
public:
    explicit QuestionScope(const QCA::EventHandler *handler);
    ~QuestionScope();
    QuestionScope(const QuestionScope &) = delete;
    QuestionScope &operator=(const QuestionScope &) = delete;

    /// The addressee in force on this thread, or null.
    static const QCA::EventHandler *current();

private:
    const QCA::EventHandler *m_previous;
};

} // namespace Trivex
