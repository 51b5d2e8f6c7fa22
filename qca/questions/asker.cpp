// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/asker.h"

#include "qca/questions/questionservice.h"

namespace Trivex {

Reply ask(const QuestionInfo &question, const QCA::KeyStoreInfo &store,
          const QCA::KeyStoreEntry &entry, const CancellationPtr &cancellation)
{
    if (cancellation && cancellation->isRequested())
        return {};
    QuestionService &service = QuestionService::instance();
    const auto ticket = std::make_shared<Ticket>(question, store, entry);
    service.post(ticket);
    std::optional<Cancellation::Watch> watch;
    // Once the question is known: a request that came meanwhile withdraws it here.
    if (cancellation)
        watch.emplace(*cancellation, [&service, ticket] { service.withdraw(ticket); });
    ticket->wait();
    // Still open when the application has ended the waiting: nobody wants the answer any more.
    service.withdraw(ticket);
    return ticket->reply();
}

void settleQuestions(std::chrono::steady_clock::time_point deadline)
{
    QuestionService::settle(deadline);
}

void noteTextAnswer(quintptr ticket, const QString &text)
{
    QuestionService::instance().noteText(ticket, text);
}

void noteAsksAgain(quintptr ticket)
{
    QuestionService::instance().noteAsksAgain(ticket);
}

} // namespace Trivex
