// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/engine/asker.h"

#include "qca/engine/questionservice.h"

namespace Trivex {

Reply ask(const QuestionInfo &question, const QCA::KeyStoreInfo &store,
          const QCA::KeyStoreEntry &entry)
{
    const auto ticket = std::make_shared<Ticket>(question, store, entry);
    QuestionService::instance().post(ticket);
    ticket->wait();
    return ticket->reply();
}

void settleQuestions()
{
    QuestionService::settle();
}

void noteTextAnswer(quintptr ticket, const QString &text)
{
    QuestionService::instance().noteText(ticket, text);
}

} // namespace Trivex
