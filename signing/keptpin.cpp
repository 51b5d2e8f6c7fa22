// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "signing/keptpin.h"

namespace Trivex {

namespace {

bool isLastTry(const QuestionInfo &question)
{
    return question.needsTypedPin || question.pinState >= PinState::FinalTry;
}

} // namespace

KeptPin::KeptPin(const QCA::EventHandler *signer)
    : m_signer(signer)
{
    connect(&m_monitor, &TokenMonitor::failed, this, [this](const TokenError &error) {
        // For any operation: the kept PIN may be the wrong one that was typed.
        if (error.kind == TokenError::WrongPin || error.kind == TokenError::PinLocked)
            forget();
    });
    connect(&m_monitor, &TokenMonitor::removed, this, [this](const QString &keyStoreId) {
        if (isOf(keyStoreId))
            forget();
    });
    connect(&m_monitor, &TokenMonitor::pinChanged, this, [this](const QString &keyStoreId) {
        // One that was not used yet may be for this token, too.
        if (!m_keyStoreId || isOf(keyStoreId))
            forget();
    });
    connect(&m_monitor, &TokenMonitor::changed, this, &KeptPin::tokenChanged);
}

void KeptPin::tokenChanged(const QString &keyStoreId)
{
    if (isOf(keyStoreId) && TokenMonitor::token(keyStoreId).pinState >= PinState::FinalTry)
        forget();
}

void KeptPin::keep(const QCA::SecureArray &pin)
{
    m_pin = pin;
    m_keyStoreId.reset();
}

void KeptPin::keepAnswer(const std::optional<QuestionInfo> &question, const QCA::SecureArray &pin)
{
    if (question && !isOwnSignature(*question))
        return;
    m_pin = pin;
    m_keyStoreId = question ? question->keyStoreId : QString();
}

QCA::SecureArray KeptPin::answerFor(const std::optional<QuestionInfo> &question)
{
    if (question && isLastTry(*question) && (!m_keyStoreId || isOf(question->keyStoreId)))
        forget();
    if (m_pin.isEmpty() || (question && !isOwnSignature(*question)))
        return {};
    const QString keyStoreId = question ? question->keyStoreId : QString();
    if (!m_keyStoreId)
        m_keyStoreId = keyStoreId;
    // A plain event does not say which token asks.
    return !question || isOf(keyStoreId) ? m_pin : QCA::SecureArray();
}

void KeptPin::forget()
{
    m_pin = QCA::SecureArray();
    m_keyStoreId.reset();
}

bool KeptPin::isOwnSignature(const QuestionInfo &question) const
{
    return question.purpose == Purpose::Sign && question.addressee == m_signer;
}

} // namespace Trivex
