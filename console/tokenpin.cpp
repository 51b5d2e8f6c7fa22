// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
#include "console/tokenpin.h"

#include "console/report.h"
#include "console/secretinput.h"
#include "qca/base/plaintext.h"

namespace Trivex {

TokenPin::TokenPin(const QString &file, QObject *parent)
    : QObject(parent)
    , m_file(file)
{
    // The question has been noted by the prompt before it is answered.
    connect(&m_prompt, &PinPrompt::questionChanged, this, &TokenPin::answer, Qt::QueuedConnection);
    m_prompt.setEnabled(true);
}

QString TokenPin::fromFile()
{
    if (m_file.isEmpty())
        return {};
    if (m_isUsed || m_prompt.isLastTry()) {
        //% "The PIN in the file is not tried: a wrong one could lock the token. Type the PIN."
        complain(qtTrId("trivex-console-pin-not-tried"));
        return {};
    }
    m_isUsed = true;
    const auto secret = secretFromFile(m_file);
    return secret ? QString::fromUtf8(secret->constData(), secret->size()) : QString();
}

void TokenPin::answer()
{
    if (!m_prompt.isOpen())
        return;
    const int question = m_prompt.question();
    QString pin = fromFile();
    if (pin.isEmpty()) {
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
    else
        m_prompt.submit(question, pin);
    pin.fill(QLatin1Char('\0'));
}

} // namespace Trivex
