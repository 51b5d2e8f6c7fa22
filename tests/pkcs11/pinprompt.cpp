// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tests/pkcs11/pinprompt.h"
#include "qca/questions/openquestions.h"

namespace TrivexTest {

PinPrompt::PinPrompt(const QByteArray &pin)
    : m_pin(pin)
{
    connect(&m_handler, &QCA::EventHandler::eventReady, this, &PinPrompt::ask);
    m_handler.start();
}

void PinPrompt::ask(int id, const QCA::Event &event)
{
    const auto info = Trivex::questionInfo(event);
    if (m_handler.isForAnother(event) || event.type() != QCA::Event::Password) {
        m_handler.reject(id);
        return;
    }
    ++m_count;
    if (info)
        m_last = *info;
    m_open.append(id);
    m_event = event;
    if (!m_holding)
        answer();
}

void PinPrompt::answer()
{
    const QVector<int> open = std::exchange(m_open, {});
    for (const int id : open) {
        if (!m_typed.isEmpty())
            m_handler.submitTypedPin(id, m_event, m_typed.takeFirst());
        else if (m_pin.isEmpty())
            m_handler.reject(id);
        else
            m_handler.submitPassword(id, m_pin);
    }
}

} // namespace TrivexTest
