// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Answers the PIN questions of all operations that ask nobody else. One in a window is enough.
PinDialog {
    id: dialog
    /// Where the questions come from.
    property PinPrompt prompt: PinPrompt {
        enabled: true
        onQuestionChanged: open ? dialog.takeQuestion() : dialog.withdraw()
    }
    /// The question that is shown; the typed text answers no other one.
    property int question: 0
    // internal
    function takeQuestion() {
        question = prompt.question
        tokenName = prompt.tokenName
        purposeText = prompt.purposeText
        pinText = prompt.pinText
        lastTry = prompt.lastTry
        wasWrong = prompt.wasWrong
        ask()
    }
    objectName: "pinPromptDialog"
    onSubmitted: prompt.submit(question, pin)
    onLeft: prompt.reject(question)
}
