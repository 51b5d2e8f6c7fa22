// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "tools/pinprompt.h"

#include "qca/base/securedtext.h"
#include "qca/questions/openquestions.h"
#include "qca/questions/questionnotifier.h"
#include "tools/tokeninfo.h"

#include <algorithm>

namespace Trivex {

PinPrompt::PinPrompt(QObject *parent)
    : QObject(parent)
{
    connect(&m_handler, &QCA::EventHandler::eventReady, this, &PinPrompt::receive);
    connect(QuestionNotifier::instance(), &QuestionNotifier::withdrawn, this, &PinPrompt::withdraw,
            Qt::QueuedConnection);
    m_handler.start();
}

PinPrompt::~PinPrompt()
{
    setEnabled(false);
}

bool PinPrompt::isEnabled() const
{
    return m_enabled;
}

void PinPrompt::setEnabled(bool enabled)
{
    if (m_enabled == enabled)
        return;
    m_enabled = enabled;
    while (!enabled && isOpen())
        reject(question());
    Q_EMIT enabledChanged();
}

bool PinPrompt::isOpen() const
{
    return !m_questions.isEmpty();
}

const QuestionInfo &PinPrompt::current() const
{
    static const QuestionInfo none;
    return m_questions.isEmpty() ? none : m_questions.head().info;
}

int PinPrompt::question() const
{
    return m_questions.isEmpty() ? 0 : m_questions.head().number;
}

QString PinPrompt::tokenName() const
{
    return current().tokenName;
}

bool PinPrompt::isLastTry() const
{
    return current().pinState == PinState::FinalTry;
}

QString PinPrompt::pinText() const
{
    return TokenInfo::pinText(current().pinState);
}

bool PinPrompt::wasWrong() const
{
    return current().wasWrong;
}

QString PinPrompt::purposeText() const
{
    return purposeText(current().purpose);
}

QString PinPrompt::purposeText(Purpose purpose)
{
    switch (purpose) {
    case Purpose::Sign:
        //% "to sign with a key on it"
        return qtTrId("trivex-app-purpose-sign");
    case Purpose::Decrypt:
        //% "to decrypt with a key on it"
        return qtTrId("trivex-app-purpose-decrypt");
    case Purpose::Write:
        //% "to write to it"
        return qtTrId("trivex-app-purpose-write");
    case Purpose::Remove:
        //% "to remove something from it"
        return qtTrId("trivex-app-purpose-remove");
    case Purpose::Generate:
        //% "to make a key on it"
        return qtTrId("trivex-app-purpose-generate");
    case Purpose::Look:
        //% "to show the keys on it"
        return qtTrId("trivex-app-purpose-look");
    case Purpose::Export:
        //% "to copy a private key from it"
        return qtTrId("trivex-app-purpose-export");
    case Purpose::SetPin:
    case Purpose::Initialise:
        break; // their PINs are typed before they begin
    }
    return {};
}

void PinPrompt::receive(int id, const QCA::Event &event)
{
    const bool asksSecret = !event.isNull() && questionKind(event) == PasswordQuestion;
    if (!m_enabled || !asksSecret || m_handler.isForAnother(event)) {
        m_handler.reject(id);
        return;
    }
    QuestionInfo info;
    if (const auto own = questionInfo(event)) {
        info = *own;
    } else {
        // A plain question of some other provider: its store is all that it tells.
        info.keyStoreId = event.keyStoreInfo().isNull() ? QString() : event.keyStoreInfo().id();
        info.tokenName =
            event.keyStoreInfo().isNull() ? event.fileName() : event.keyStoreInfo().name();
    }
    m_questions.enqueue({++m_lastNumber, id, event, info});
    if (m_questions.size() == 1)
        Q_EMIT questionChanged();
}

void PinPrompt::submit(int question, const QString &pin)
{
    if (!isOpen() || question != this->question() || pin.isEmpty())
        return;
    const Question answered = m_questions.dequeue();
    m_handler.submitTypedPin(answered.id, answered.event, securedText(pin.toUtf8()));
    Q_EMIT questionChanged();
}

void PinPrompt::submitKept(int question, const QString &pin)
{
    if (!isOpen() || question != this->question() || pin.isEmpty())
        return;
    const Question answered = m_questions.dequeue();
    m_handler.submitPassword(answered.id, securedText(pin.toUtf8()));
    Q_EMIT questionChanged();
}

void PinPrompt::reject(int question)
{
    if (!isOpen() || question != this->question())
        return;
    m_handler.reject(m_questions.dequeue().id);
    Q_EMIT questionChanged();
}

void PinPrompt::withdraw(quintptr ticket)
{
    const auto found =
        std::find_if(m_questions.begin(), m_questions.end(), [ticket](const Question &question) {
            return reinterpret_cast<quintptr>(question.info.ticket) == ticket;
        });
    if (found == m_questions.end())
        return;
    const bool wasOpen = found == m_questions.begin();
    m_handler.reject(found->id);
    m_questions.erase(found);
    if (!wasOpen)
        return;
    Q_EMIT withdrawn();
    Q_EMIT questionChanged();
}

} // namespace Trivex
