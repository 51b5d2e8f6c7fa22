// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/engine/ticket.h"

namespace Trivex {

Ticket::Ticket(const QuestionInfo &question, const QCA::KeyStoreInfo &store,
               const QCA::KeyStoreEntry &entry)
    : m_question(question)
    , m_store(store)
    , m_entry(entry)
{
}

QuestionInfo Ticket::question() const
{
    QuestionInfo info = m_question;
    info.ticket = id();
    return info;
}

void Ticket::noteText(const QString &text)
{
    const QMutexLocker locker(&m_mutex);
    if (!m_resolved)
        m_reply.text = text;
}

bool Ticket::resolve(bool accepted, const QCA::SecureArray &password)
{
    {
        const QMutexLocker locker(&m_mutex);
        if (m_resolved)
            return false;
        m_resolved = true;
        m_reply.accepted = accepted;
        if (accepted)
            m_reply.password = password;
        m_condition.wakeAll();
    }
    Q_EMIT resolved();
    return true;
}

bool Ticket::isResolved() const
{
    const QMutexLocker locker(&m_mutex);
    return m_resolved;
}

void Ticket::wait()
{
    const QMutexLocker locker(&m_mutex);
    while (!m_resolved)
        m_condition.wait(&m_mutex);
}

Reply Ticket::reply() const
{
    const QMutexLocker locker(&m_mutex);
    return m_reply;
}

} // namespace Trivex
