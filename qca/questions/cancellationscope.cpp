// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/cancellationscope.h"

#include <utility>

namespace Trivex {

namespace {

thread_local CancellationPtr currentTask;

} // namespace

CancellationScope::CancellationScope(CancellationPtr task)
    : m_previous(std::exchange(currentTask, std::move(task)))
{
}

CancellationScope::~CancellationScope()
{
    currentTask = std::move(m_previous);
}

CancellationPtr CancellationScope::current()
{
    return currentTask;
}

} // namespace Trivex
