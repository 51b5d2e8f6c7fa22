// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/questionscope.h"

#include <utility>

namespace Trivex {

namespace {

thread_local const QCA::EventHandler *currentAddressee = nullptr;

} // namespace

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
