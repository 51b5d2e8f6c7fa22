// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/openquestions.h"

#include "qca/questions/questionservice.h"

namespace Trivex {

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

} // namespace Trivex
