// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "qca/questions/ticket.h"

#include <atomic>

namespace Trivex {

namespace {

/// Odd, and counted from an address of our own: foreign providers put real pointers, or small
/// numbers, where this is carried.
quintptr nextId()
{
    static std::atomic<quintptr> last{reinterpret_cast<quintptr>(&last) | 1U};
    return last += 2;
}

} // namespace

Ticket::Ticket(const QuestionInfo &question, const QCA::KeyStoreInfo &store,
               const QCA::KeyStoreEntry &entry)
    : m_id(nextId())
    , m_question(question)
    , m_store(store)
    , m_entry(entry)
{
}

QuestionInfo Ticket::question() const
{
    QuestionInfo info = m_question;
    info.ticket = id();
    info.withdrawn = isResolved();
    return info;
}

void Ticket::noteText(const QString &text)
{
    const std::lock_guard lock(m_mutex);
    if (!m_decided)
        m_reply.text = text;
}

void Ticket::noteAsksAgain()
{
    const std::lock_guard lock(m_mutex);
    if (!m_decided)
        m_reply.asksAgain = true;
}

bool Ticket::resolve(bool accepted, const QCA::SecureArray &password)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_decided)
            return false;
        m_decided = true;
        m_reply.accepted = accepted;
        if (accepted)
            m_reply.password = Secret(password);
    }
    return m_waiter.resolve();
}

Reply Ticket::reply() const
{
    const std::lock_guard lock(m_mutex);
    return m_reply;
}

} // namespace Trivex
