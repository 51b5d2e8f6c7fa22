// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "console/tokenpin.h"

#include "console/report.h"
#include "console/secretinput.h"
#include "qca/base/plaintext.h"

namespace Trivex {

TokenPin::TokenPin(const QString &file, QObject *parent)
    : QObject(parent)
{
    if (!file.isEmpty()) {
        m_secret = secretFromFile(file);
        if (!m_secret || m_secret->isEmpty()) {
            //% "%1 holds no PIN, or can't be read."
            m_problem = qtTrId("trivex-console-no-pin").arg(file);
        }
    }
    // The question has been noted by the prompt before it is answered.
    connect(&m_prompt, &PinPrompt::questionChanged, this, &TokenPin::answer, Qt::QueuedConnection);
    m_prompt.setEnabled(true);
}

QString TokenPin::fromFile()
{
    if (!m_secret)
        return {};
    if (m_isUsed || m_prompt.isLastTry()) {
        //% "The PIN in the file is not tried: a wrong one could lock the token. Type the PIN."
        complain(qtTrId("trivex-console-pin-not-tried"));
        return {};
    }
    m_isUsed = true;
    return QString::fromUtf8(m_secret->constData(), m_secret->size());
}

void TokenPin::answer()
{
    if (!m_prompt.isOpen())
        return;
    const int question = m_prompt.question();
    QString pin = fromFile();
    const bool isTyped = pin.isEmpty();
    if (isTyped) {
        if (!m_prompt.pinText().isEmpty())
            complain(m_prompt.pinText());
        //% "PIN of %1, %2:"
        const auto typed =
            typedSecret(qtTrId("trivex-console-pin")
                            .arg(plainText(m_prompt.tokenName()), m_prompt.purposeText()));
        if (typed)
            pin = QString::fromUtf8(typed->constData(), typed->size());
    }
    if (pin.isEmpty())
        m_prompt.reject(question);
    else if (isTyped)
        m_prompt.submit(question, pin);
    else
        m_prompt.submitKept(question, pin);
    pin.fill(QLatin1Char('\0'));
}

} // namespace Trivex
