// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#pragma once

#include "qca/questions/mailbox.h"
#include "qca/questions/ticket.h"

#include <QHash>
#include <QSet>
#include <QThread>

#include <atomic>
#include <chrono>
#include <mutex>
#include <optional>

namespace Trivex {

/// Runs QCA's askers for all questions of the process, in one thread of its own, and knows which
/// questions are open.
///
/// The thread runs from the first question on to the end of the application object, and again when
/// another one is made: Qt can't run one without it.
///
/// One thread, because an asker must be waited for and deleted where its answer arrives, and an
/// asking thread may be the one whose handler answers.
class QuestionService : public QObject {
    Q_OBJECT
public:
    using Deadline = std::chrono::steady_clock::time_point;

    /// Never deleted, because a thread that a module holds may come back late.
    static QuestionService &instance();

    /// Hands the question to QCA's handlers. Thread-safe.
    void post(const TicketPtr &ticket);
    /// The question behind `ticket` while it is open. Thread-safe.
    std::optional<QuestionInfo> lookUp(quintptr ticket) const;
    /// Thread-safe.
    void noteText(quintptr ticket, const QString &text);
    /// Thread-safe.
    void noteAsksAgain(quintptr ticket);
    /// Waits until what has been answered is cleaned up, so that nothing of QCA's is left when QCA
    /// ends. Nothing to do when no question was ever asked. Thread-safe.
    static void settle(Deadline deadline);
    /// Rejects the question and tells prompts of it; nothing when it is over. Thread-safe.
    void withdraw(const TicketPtr &ticket);
    /// Rejects the open questions about `keyStoreId` (all, when empty). Thread-safe.
    void cancel(const QString &keyStoreId);
    /// Rejects the questions of the owner's operations, now and from now on. Thread-safe.
    void refuse(const OperationOwnerPtr &owner);

private:
    QuestionService();
    void resume();
    bool ensureRuns();
    void stop(Deadline deadline);
    void start(const TicketPtr &ticket);
    void finish(const TicketPtr &ticket, QCA::PasswordAsker *asker);
    void waitForTurn(Deadline deadline);
    /// Under the lock.
    bool accepts(const QuestionInfo &question) const;
    TicketPtr find(quintptr ticket) const;

    mutable std::mutex m_mutex;
    QHash<quintptr, TicketPtr> m_tickets;
    /// The askers that wait for an answer or for their deletion. At the end of the process the rest
    /// is not deleted, because an asker can't be deleted after QCA has ended.
    QSet<QCA::PasswordAsker *> m_askers;
    QThread m_thread;
    Mailbox m_mailbox{this};
    bool m_runs = false;
    /// Until the next application object is made.
    bool m_stopped = false;
    static std::atomic_bool s_exists;
};

} // namespace Trivex
