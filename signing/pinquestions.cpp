// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "signing/pinquestions.h"
#include "qca/questions/questionnotifier.h"

#include <QTimer>

#include <algorithm>

namespace Trivex {

PinQuestions::PinQuestions(QCA::EventHandler *handler)
    : m_handler(handler)
{
    connect(QuestionNotifier::instance(), &QuestionNotifier::withdrawn, this,
            &PinQuestions::withdraw, Qt::QueuedConnection);
}

void PinQuestions::add(int id, const std::optional<QuestionInfo> &info)
{
    m_open.push_back({id, ++m_lastNumber, info});
    if (m_open.size() == 1)
        putFirst();
}

void PinQuestions::putFirst()
{
    if (m_open.empty() || m_open.front().state != State::Waiting)
        return;
    m_open.front().state = State::Put;
    // A copy, because the listener may reject at once.
    const auto info = m_open.front().info;
    Q_EMIT put(info);
}

PinQuestions::Question PinQuestions::takeFirst()
{
    const Question first = m_open.front();
    m_open.pop_front();
    // Not at once: two rejections in a row mean one question.
    QTimer::singleShot(0, this, &PinQuestions::putFirst);
    return first;
}

void PinQuestions::accept(const QCA::SecureArray &pin)
{
    if (m_open.empty() || m_open.front().state != State::Put)
        return;
    m_open.front().state = State::Answered;
    QTimer::singleShot(AnswerDelay.milliseconds(), Qt::PreciseTimer, this,
                       [this, number = m_open.front().number, pin] { deliver(number, pin); });
}

void PinQuestions::deliver(int number, const QCA::SecureArray &pin)
{
    // Rejected or withdrawn meanwhile.
    if (m_open.empty() || m_open.front().number != number)
        return;
    const Question question = takeFirst();
    Q_EMIT answered(question.info, pin);
    m_handler->submitPassword(question.id, pin);
}

void PinQuestions::reject()
{
    if (!m_open.empty() && m_open.front().state != State::Waiting)
        m_handler->reject(takeFirst().id);
}

void PinQuestions::withdraw(quintptr ticket)
{
    const auto found = std::find_if(m_open.begin(), m_open.end(), [ticket](const Question &one) {
        return one.info && one.info->ticket == ticket;
    });
    if (found == m_open.end())
        return;
    const int id = found->id;
    if (found == m_open.begin())
        takeFirst();
    else
        m_open.erase(found);
    m_handler->reject(id);
}

} // namespace Trivex
