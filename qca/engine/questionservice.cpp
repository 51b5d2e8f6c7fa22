// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/engine/questionservice.h"

#include <QCoreApplication>

#include <chrono>
#include <future>

namespace Trivex {

namespace {

constexpr std::chrono::seconds SettlePatience{1};

bool concerns(const Ticket &ticket, const QString &keyStoreId)
{
    return keyStoreId.isEmpty() || ticket.question().keyStoreId == keyStoreId;
}

} // namespace

std::atomic_bool QuestionService::s_exists{false};

QuestionService &QuestionService::instance()
{
    static QuestionService service;
    return service;
}

QuestionService::QuestionService()
{
    m_thread.setObjectName(QStringLiteral("TrivexQuestions"));
    moveToThread(&m_thread);
    // The thread must be gone before the application object is: Qt can't run one without it.
    qAddPostRoutine([] { instance().stop(); });
    m_thread.start();
    s_exists = true;
}

QuestionService::~QuestionService()
{
    stop();
}

void QuestionService::stop()
{
    {
        const std::lock_guard locker(m_mutex);
        m_stopped = true;
    }
    cancel(QString());
    m_thread.quit();
    m_thread.wait();
}

void QuestionService::post(const TicketPtr &ticket)
{
    {
        const std::lock_guard locker(m_mutex);
        if (takes(ticket->question())) {
            m_tickets.insert(ticket->id(), ticket);
            m_mailbox.post([this, ticket] { start(ticket); });
            return;
        }
    }
    ticket->resolve(false, {});
}

bool QuestionService::takes(const QuestionInfo &question) const
{
    return !m_stopped && !(question.owner && question.owner->isClosed());
}

void QuestionService::start(const TicketPtr &ticket)
{
    if (ticket->isResolved()) {
        // Withdrawn before anybody was asked.
        const std::lock_guard locker(m_mutex);
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
        const std::lock_guard locker(m_mutex);
        m_tickets.remove(ticket->id());
    }
    ticket->resolve(asker->accepted(), asker->password());
    // Not here: its own signal is being delivered.
    m_mailbox.post([this, asker] {
        m_askers.remove(asker);
        delete asker;
    });
}

void QuestionService::settle()
{
    if (!s_exists || QThread::currentThread() == &instance().m_thread)
        return;
    // An answer passes through the thread's event queue twice: it is delivered, then its asker is
    // deleted.
    for (int round = 0; round < 2; ++round)
        instance().waitForTurn();
}

void QuestionService::waitForTurn()
{
    const auto done = std::make_shared<std::promise<void>>();
    std::future<void> turn = done->get_future();
    {
        const std::lock_guard locker(m_mutex);
        if (m_stopped)
            return;
        m_mailbox.post([done] { done->set_value(); });
    }
    // The thread may be told to end meanwhile, and then takes no more turns.
    turn.wait_for(SettlePatience);
}

TicketPtr QuestionService::find(quintptr ticket) const
{
    const std::lock_guard locker(m_mutex);
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

void QuestionService::withdraw(const TicketPtr &ticket)
{
    if (ticket->resolve(false, {}))
        Q_EMIT QuestionNotifier::instance()->withdrawn(ticket->id());
}

void QuestionService::cancel(const QString &keyStoreId)
{
    QVector<TicketPtr> open;
    {
        const std::lock_guard locker(m_mutex);
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
        const std::lock_guard locker(m_mutex);
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
