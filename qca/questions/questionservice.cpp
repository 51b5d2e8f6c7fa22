// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/questionservice.h"

#include "qca/base/processend.h"
#include "qca/questions/questionnotifier.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <chrono>
#include <future>
#include <utility>

namespace Trivex {

namespace {

constexpr std::chrono::seconds StopPatience{2};

bool concerns(const Ticket &ticket, const QString &keyStoreId)
{
    return keyStoreId.isEmpty() || ticket.question().keyStoreId == keyStoreId;
}

} // namespace

std::atomic_bool QuestionService::s_exists{false};

QuestionService &QuestionService::instance()
{
    static auto *service = new QuestionService;
    return *service;
}

QuestionService::QuestionService()
{
    m_thread.setObjectName(QStringLiteral("TrivexQuestions"));
    moveToThread(&m_thread);
    // Called for each application; now, too, when there is one.
    qAddPreRoutine([] {
        if (s_exists)
            instance().resume();
    });
    s_exists = true;
}

void QuestionService::resume()
{
    const std::lock_guard lock(m_mutex);
    m_stopped = false;
}

// Called under the lock.
bool QuestionService::ensureRuns()
{
    if (m_stopped || ProcessEnd::hasBegun() || !QCoreApplication::instance())
        return false;
    if (std::exchange(m_runs, true))
        return true;
    // The routines that follow an application are forgotten with it, those that precede one stay.
    qAddPostRoutine([] { instance().stop(std::chrono::steady_clock::now() + StopPatience); });
    ProcessEnd::add([](Deadline deadline) { instance().stop(deadline); });
    m_thread.start();
    return true;
}

void QuestionService::stop(Deadline deadline)
{
    // The thread is the parent's, and the lock may be held there for ever.
    if (ProcessEnd::isForkedChild())
        return;
    {
        const std::lock_guard lock(m_mutex);
        m_stopped = true;
    }
    cancel(QString());
    m_thread.quit();
    if (!m_thread.wait(QDeadlineTimer(deadline)))
        return;
    const std::lock_guard lock(m_mutex);
    m_runs = false;
}

void QuestionService::post(const TicketPtr &ticket)
{
    {
        const std::lock_guard lock(m_mutex);
        if (accepts(ticket->question()) && ensureRuns()) {
            m_tickets.insert(ticket->id(), ticket);
            m_mailbox.post([this, ticket] { start(ticket); });
            return;
        }
    }
    ticket->resolve(false, {});
}

bool QuestionService::accepts(const QuestionInfo &question) const
{
    return !m_stopped && !(question.owner && question.owner->isClosed());
}

void QuestionService::start(const TicketPtr &ticket)
{
    if (ticket->isResolved()) {
        // Withdrawn before anybody was asked, perhaps under an application object before this one.
        const std::lock_guard lock(m_mutex);
        m_tickets.remove(ticket->id());
        return;
    }
    // Kept until QCA has answered, even when the question was cancelled long before: an asker that
    // goes while its question is pending is written to after its end.
    auto *asker = new QCA::PasswordAsker;
    m_askers.insert(asker);
    connect(asker, &QCA::PasswordAsker::responseReady, this,
            [this, ticket, asker] { finish(ticket, asker); });
    const auto style = ticket->question().kind == PasswordQuestion ? QCA::Event::StylePIN
                                                                   : QCA::Event::StylePassword;
    asker->ask(style, ticket->store(), ticket->entry(), reinterpret_cast<void *>(ticket->id()));
}

void QuestionService::finish(const TicketPtr &ticket, QCA::PasswordAsker *asker)
{
    // The answering thread may still hold the asker's lock; this returns once it has let go.
    asker->waitForResponse();
    {
        const std::lock_guard lock(m_mutex);
        m_tickets.remove(ticket->id());
    }
    ticket->resolve(asker->accepted(), asker->password());
    // It is not deleted here, because its own signal is being delivered.
    m_mailbox.post([this, asker] {
        m_askers.remove(asker);
        delete asker;
    });
}

void QuestionService::settle(Deadline deadline)
{
    if (!s_exists || ProcessEnd::isForkedChild()
        || QThread::currentThread() == &instance().m_thread)
        return;
    // An answer passes through the thread's event queue twice: it is delivered, then its asker is
    // deleted.
    for (int round = 0; round < 2; ++round)
        instance().waitForTurn(deadline);
}

void QuestionService::waitForTurn(Deadline deadline)
{
    const auto done = std::make_shared<std::promise<void>>();
    std::future<void> turn = done->get_future();
    {
        const std::lock_guard lock(m_mutex);
        if (m_stopped || !m_runs)
            return;
        m_mailbox.post([done] { done->set_value(); });
    }
    // The thread may be told to end meanwhile, and then takes no more turns.
    turn.wait_until(deadline);
}

TicketPtr QuestionService::find(quintptr ticket) const
{
    const std::lock_guard lock(m_mutex);
    return m_tickets.value(ticket);
}

std::optional<QuestionInfo> QuestionService::lookUp(quintptr ticket) const
{
    const TicketPtr found = find(ticket);
    return found ? std::make_optional(found->question()) : std::nullopt;
}

void QuestionService::noteText(quintptr ticket, const QString &text)
{
    if (const TicketPtr found = find(ticket))
        found->noteText(text);
}

void QuestionService::noteAsksAgain(quintptr ticket)
{
    if (const TicketPtr found = find(ticket))
        found->noteAsksAgain();
}

void QuestionService::withdraw(const TicketPtr &ticket)
{
    if (ticket->resolve(false, {}))
        Q_EMIT QuestionNotifier::instance()->withdrawn(ticket->id());
}

void QuestionService::cancel(const QString &keyStoreId)
{
    QVector<TicketPtr> open;
    {
        const std::lock_guard lock(m_mutex);
        for (const TicketPtr &ticket : qAsConst(m_tickets)) {
            if (concerns(*ticket, keyStoreId))
                open.append(ticket);
        }
    }
    for (const TicketPtr &ticket : qAsConst(open))
        withdraw(ticket);
}

void QuestionService::refuse(const OperationOwnerPtr &owner)
{
    QVector<TicketPtr> open;
    {
        const std::lock_guard lock(m_mutex);
        owner->m_closed = true;
        for (const TicketPtr &ticket : qAsConst(m_tickets)) {
            if (ticket->question().owner == owner)
                open.append(ticket);
        }
    }
    for (const TicketPtr &ticket : qAsConst(open))
        withdraw(ticket);
}

} // namespace Trivex
