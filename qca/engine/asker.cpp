// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/engine/asker.h"

#include "qca/engine/questionservice.h"

#include <QCoreApplication>
#include <QEventLoop>

namespace Trivex {

namespace {

bool isGuiThread()
{
    const QCoreApplication *application = QCoreApplication::instance();
    return application && application->thread() == QThread::currentThread();
}

void waitInEventLoop(const Ticket &ticket)
{
    QEventLoop loop;
    // What starts inside the loop is no part of the operation that waits here.
    const QuestionScope nobody(nullptr);
    // Queued, so that a question resolved between these two lines still ends the loop.
    QObject::connect(&ticket, &Ticket::resolved, &loop, &QEventLoop::quit, Qt::QueuedConnection);
    if (!ticket.isResolved())
        loop.exec();
}

} // namespace

Reply ask(const QuestionInfo &question, const QCA::KeyStoreInfo &store,
          const QCA::KeyStoreEntry &entry)
{
    const auto ticket = std::make_shared<Ticket>(question, store, entry);
    QuestionService::instance().post(ticket);
    if (isGuiThread())
        waitInEventLoop(*ticket);
    else
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
