// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/question.h"

#include "qca/questions/questionservice.h"

#include <utility>

namespace Trivex {

namespace {

thread_local const QCA::EventHandler *currentAddressee = nullptr;

} // namespace

std::optional<QuestionInfo> questionInfo(const QCA::Event &event)
{
    if (event.isNull() || !event.ptr())
        return std::nullopt;
    return QuestionService::instance().lookUp(reinterpret_cast<quintptr>(event.ptr()));
}

int questionKind(const QCA::Event &event)
{
    const auto info = questionInfo(event);
    return info ? info->kind : int(event.type());
}

void cancelQuestions(const QString &keyStoreId)
{
    QuestionService::instance().cancel(keyStoreId);
}

void refuseQuestions(const OperationOwnerPtr &owner)
{
    QuestionService::instance().refuse(owner);
}

QuestionNotifier::QuestionNotifier()
{
    // So that the signal can be queued.
    qRegisterMetaType<quintptr>("quintptr");
}

QuestionNotifier *QuestionNotifier::instance()
{
    // Never deleted, because a thread that a module holds may come back late.
    static auto *notifier = new QuestionNotifier;
    return notifier;
}

QuestionScope::QuestionScope(const QCA::EventHandler *handler)
    : m_previous(std::exchange(currentAddressee, handler))
{
}

QuestionScope::~QuestionScope()
{
    currentAddressee = m_previous;
}

const QCA::EventHandler *QuestionScope::current()
{
    return currentAddressee;
}

} // namespace Trivex
