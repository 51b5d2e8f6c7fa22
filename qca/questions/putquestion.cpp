// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/putquestion.h"

#include <utility>

namespace Trivex {

namespace {

thread_local const QuestionInfo *putQuestion = nullptr;

} // namespace

PutQuestion::PutQuestion(const std::optional<QuestionInfo> &question)
    : m_previous(std::exchange(putQuestion, question ? &*question : nullptr))
{
}

PutQuestion::~PutQuestion()
{
    putQuestion = m_previous;
}

const QuestionInfo *PutQuestion::current()
{
    return putQuestion;
}

} // namespace Trivex
