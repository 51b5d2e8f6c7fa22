// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/base/secret.h"
#include "qca/questions/asker.h"

namespace Trivex {

struct Answers;

/// One operation on a token, from its start to its end: a signature, a generation, a write, a
/// removal. Make it on the thread on which the caller starts the operation, so that the answers
/// stored for it and the handler that it addresses are found; then move it to where the work is
/// done. It holds the answers for as long as it lives and leaves none behind.
class TRIVEX_QCA_EXPORT Operation {
public:
    /// Takes the stored answers for `keyStoreId`, unless the purpose is signing, decrypting or
    /// looking, which stored answers never serve. For a generation `keyStoreId` may be empty: it is
    /// then the store that the generator in force on this thread (`GenerationTarget`) or else the
    /// stored answers name. `owner` may be null.
    explicit Operation(Purpose purpose, const QString &keyStoreId = QString(),
                       OperationOwnerPtr owner = {});
    /// An operation that has to follow another one, whether anybody waits for it or not. It takes
    /// no stored answers and asks nobody.
    static Operation unattended(Purpose purpose, const QString &keyStoreId);

    /// An operation of somebody who has all PINs that it needs and tells of a failure: it takes no
    /// stored answers, asks nobody, and its failure is published nowhere.
    static Operation attended(Purpose purpose, const QString &keyStoreId);

    bool isUnattended() const { return m_isUnattended; }
    bool isAttended() const { return m_isAttended; }
    /// By which its end can be asked for: its own, or that of the task that has started it
    /// (`CancellationScope`); not null.
    const CancellationPtr &cancellation() const { return m_cancellation; }
    Purpose purpose() const { return m_purpose; }
    /// The store that the operation works on; empty when none was named.
    QString keyStoreId() const { return m_keyStoreId; }
    /// The name of the object to work on (the label of a key to generate); may be empty.
    QString objectId() const { return m_objectId; }

    /// True while a stored PIN waits to be handed out.
    bool hasStoredPin() const { return !m_storedPin.isEmpty(); }

    /// The result of asking for a PIN.
    struct Pin {
        Secret value; ///< empty: there is none, the operation has to fail
        bool typed = false; ///< a person typed it for this very operation
        bool asksAgain = false; ///< and types another one, should it be wrong
    };

    /// The PIN to log in with: the stored one where there is one, and nobody is asked; otherwise
    /// the answer of an interactive handler. When `info.pinState` is `FinalTry` only an
    /// interactive handler is asked; when it is `Locked` nobody is. An empty PIN counts as none.
    /// Each call costs the caller one attempt on the token at most; a stored PIN is handed out
    /// once only. There is none once the end of the operation has been asked for, and an open
    /// question is withdrawn then.
    Pin pin(QuestionInfo info, const QCA::KeyStoreInfo &store,
            const QCA::KeyStoreEntry &entry = QCA::KeyStoreEntry());

private:
    struct WithoutAnswers { };
    Operation(Purpose purpose, const QString &keyStoreId, WithoutAnswers);
    void useStoredAnswers(const Answers &stored);

    Purpose m_purpose;
    QString m_keyStoreId;
    QString m_objectId;
    Secret m_storedPin;
    const QCA::EventHandler *m_addressee = nullptr;
    CancellationPtr m_cancellation;
    bool m_isUnattended = false;
    bool m_isAttended = false;
    OperationOwnerPtr m_owner;
    bool m_hadStoredPin = false;
};

} // namespace Trivex
