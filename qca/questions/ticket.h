// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/questions/question.h"
#include "qca/questions/reply.h"
#include "qca/questions/waiter.h"

#include <memory>
#include <mutex>

namespace Trivex {

/// One open question: what it asks, and where the asking thread waits. Its number travels through
/// QCA in `Event::ptr()` and is only ever looked up, because an event, or an answer to it, may pass
/// by after its question is over. So a number is never used again, as an address would be.
class Ticket {
public:
    Ticket(const QuestionInfo &question, const QCA::KeyStoreInfo &store,
           const QCA::KeyStoreEntry &entry);

    /// The value of `QuestionInfo::ticket`; never 0.
    quintptr id() const { return m_id; }
    QuestionInfo question() const;
    const QCA::KeyStoreInfo &store() const { return m_store; }
    const QCA::KeyStoreEntry &entry() const { return m_entry; }

    /// Keeps the text that answers kinds 2 and 4 until the event is accepted.
    void noteText(const QString &text);
    /// Notes that the person who answers can be asked again.
    void noteAsksAgain();
    /// The first call decides; later ones change nothing. True for the first.
    bool resolve(bool accepted, const QCA::SecureArray &password);
    bool isResolved() const { return m_waiter.isResolved(); }

    /// As `Waiter::wait`.
    void wait() { m_waiter.wait(); }
    Reply reply() const;

private:
    const quintptr m_id;
    mutable std::mutex m_mutex;
    Waiter m_waiter;
    const QuestionInfo m_question;
    const QCA::KeyStoreInfo m_store;
    const QCA::KeyStoreEntry m_entry;
    Reply m_reply;
    bool m_decided = false;
};

using TicketPtr = std::shared_ptr<Ticket>;

} // namespace Trivex
