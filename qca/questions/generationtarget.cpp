// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/generationtarget.h"

#include <utility>

namespace Trivex {

namespace {

thread_local const GenerationTarget *currentTarget = nullptr;

} // namespace

GenerationTarget::GenerationTarget(const QString &keyStoreId, const QString &objectId)
    : m_keyStoreId(keyStoreId)
    , m_objectId(objectId)
    , m_previous(std::exchange(currentTarget, this))
{
}

GenerationTarget::~GenerationTarget()
{
    currentTarget = m_previous;
}

GenerationTarget::None::None()
    : m_previous(std::exchange(currentTarget, nullptr))
{
}

GenerationTarget::None::~None()
{
    currentTarget = m_previous;
}

const GenerationTarget *GenerationTarget::current()
{
    return currentTarget;
}

} // namespace Trivex
