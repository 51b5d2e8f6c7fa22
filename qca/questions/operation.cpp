// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/operation.h"

#include "qca/questions/cancellationscope.h"
#include "qca/questions/generationtarget.h"
#include "qca/questions/questionscope.h"
#include "qca/questions/storedanswers.h"

#include <utility>

namespace Trivex {

namespace {

bool isServedByStoredAnswers(Purpose purpose)
{
    return purpose == Purpose::Write || purpose == Purpose::Remove || purpose == Purpose::Generate;
}

} // namespace

Operation::Operation(Purpose purpose, const QString &keyStoreId, OperationOwnerPtr owner)
    : m_purpose(purpose)
    , m_addressee(QuestionScope::current())
    , m_cancellation(CancellationScope::current())
    , m_owner(std::move(owner))
{
    const GenerationTarget *target =
        purpose == Purpose::Generate ? GenerationTarget::current() : nullptr;
    const QString requestedStore =
        target && keyStoreId.isEmpty() ? target->keyStoreId() : keyStoreId;
    if (isServedByStoredAnswers(purpose)) {
        if (const auto stored = takeStoredAnswers(requestedStore))
            useStoredAnswers(*stored);
    }
    if (!requestedStore.isEmpty())
        m_keyStoreId = requestedStore;
    if (target)
        m_objectId = target->objectId();
    m_hadStoredPin = !m_storedPin.isEmpty();
    if (!m_cancellation)
        m_cancellation = std::make_shared<Cancellation>();
}

void Operation::useStoredAnswers(const Answers &stored)
{
    m_keyStoreId = stored.keyStoreId;
    m_objectId = stored.objectId;
    m_storedPin = Secret(stored.password);
}

Operation::Operation(Purpose purpose, const QString &keyStoreId, WithoutAnswers)
    : m_purpose(purpose)
    , m_keyStoreId(keyStoreId)
    , m_cancellation(std::make_shared<Cancellation>())
{
}

Operation Operation::unattended(Purpose purpose, const QString &keyStoreId)
{
    Operation operation(purpose, keyStoreId, WithoutAnswers());
    operation.m_isUnattended = true;
    return operation;
}

Operation Operation::attended(Purpose purpose, const QString &keyStoreId)
{
    Operation operation(purpose, keyStoreId, WithoutAnswers());
    operation.m_isAttended = true;
    return operation;
}

Operation::Pin Operation::pin(QuestionInfo info, const QCA::KeyStoreInfo &store,
                              const QCA::KeyStoreEntry &entry)
{
    const bool asksNobody = m_isUnattended || m_isAttended;
    if (info.pinState == PinState::Locked || asksNobody || m_cancellation->isRequested())
        return {};
    if (m_hadStoredPin && info.pinState != PinState::FinalTry) {
        Pin stored;
        stored.value = std::exchange(m_storedPin, Secret());
        return stored;
    }
    info.purpose = m_purpose;
    info.needsTypedPin = info.pinState == PinState::FinalTry;
    info.addressee = m_addressee;
    info.owner = m_owner;
    const Reply reply = ask(info, store, entry, m_cancellation);
    if (!reply.accepted || reply.password.isEmpty())
        return {};
    return {reply.password, true, reply.asksAgain};
}

} // namespace Trivex
