// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Asks for the PIN of one token: which token, what for, how many tries are left. The last try
/// needs a tick of consent. Ends in `submitted`, or in `left` when it is closed in any other way.
BaseDialog {
    id: dialog
    /// The label of the token whose PIN is asked for.
    property string tokenName
    /// What the PIN is wanted for, as a sentence.
    property string purposeText
    /// What is known of the tries that are left, as a sentence.
    property string pinText
    /// A wrong PIN locks the token: consent is asked for.
    property bool lastTry: false
    /// The PIN is locked, so that there is nothing to type.
    property bool locked: false
    /// The PIN that was typed before, for the same thing, was not right.
    property bool wasWrong: false
    /// What is typed can be submitted.
    readonly property bool ready: pin.length > 0 && (!lastTry || consent.checked) && !locked
    /// The question has its answer, or is over.
    property bool answered: false
    /// True when this question replaced another one that ended while its dialog was open.
    property bool replaced: false
    /// The PIN was typed.
    signal submitted(string pin)
    /// The dialog was closed without a PIN.
    signal left()

    objectName: "pinDialog"
    title: qsTrId("trivex-app-pin-title")
    preferredWidth: Theme.fontSize * 28

    /// Asks. Text and consent belong to one question: those for a question that ended while it was
    /// shown are discarded, and so are keys that are still being typed for it.
    function ask() {
        replaced = visible && !answered
        if (!replaced)
            return open()
        forget()
        still.restart()
        // Tells a screen reader whose PIN is wanted now.
        frame.forceActiveFocus(Qt.OtherFocusReason)
        pin.forceActiveFocus(Qt.OtherFocusReason)
    }
    /// Forgets what is typed.
    function forget() {
        answered = false
        pin.clear()
        consent.checked = false
    }
    /// Closes without an answer: the question is over.
    function withdraw() {
        answered = true
        close()
    }
    /// Submits what is typed, as Enter does.
    function submit() {
        if (!ready || answered)
            return
        answered = true
        const text = pin.text
        close()
        submitted(text)
    }
    onAboutToShow: forget()
    onOpened: pin.forceActiveFocus(Qt.PopupFocusReason)
    onClosed: {
        pin.clear()
        replaced = false
        if (!answered)
            left()
    }

    // Runs until the keyboard has been still for as long.
    Timer {
        id: still
        interval: 700
    }
    Notice {
        objectName: "pinReplaced"
        level: 2
        text: dialog.replaced ? qsTrId("trivex-app-pin-replaced") : ""
        Layout.fillWidth: true
    }
    Notice {
        objectName: "pinWrong"
        level: 3
        text: dialog.wasWrong ? qsTrId("trivex-app-pin-wrong") : ""
        Layout.fillWidth: true
    }
    RowLayout {
        id: frame
        spacing: Theme.unit * 1.5
        Layout.fillWidth: true
        Rectangle {
            width: Theme.iconSize * 2.2
            height: width
            radius: Theme.radius
            color: Theme.selected
            Icon {
                anchors.centerIn: parent
                name: "token"
                color: Theme.link
            }
        }
        ColumnLayout {
            spacing: 2
            Layout.fillWidth: true
            Label {
                textFormat: Text.PlainText
                objectName: "pinTokenName"
                text: dialog.tokenName
                font.bold: true
                wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                Layout.fillWidth: true
            }
            Label {
                textFormat: Text.PlainText
                text: dialog.purposeText
                visible: text.length > 0
                color: Theme.textDim
                wrapMode: Text.WordWrap
                Layout.fillWidth: true
            }
        }
    }
    PasswordField {
        id: pin
        objectName: "pinField"
        placeholderText: qsTrId("trivex-app-pin")
        Accessible.name: Texts.put(qsTrId("trivex-app-pin-of"), [dialog.tokenName])
        Accessible.description: (dialog.wasWrong ? qsTrId("trivex-app-pin-wrong") + " " : "")
            + dialog.pinText
        enabled: !dialog.locked
        Layout.fillWidth: true
        onAccepted: dialog.submit()
        Keys.onPressed: {
            event.accepted = still.running && event.text.length > 0
                && event.key !== Qt.Key_Escape && event.key !== Qt.Key_Tab
                && event.key !== Qt.Key_Backtab
            if (event.accepted)
                still.restart()
        }
    }
    Notice {
        objectName: "pinTries"
        text: dialog.pinText
        level: dialog.locked || dialog.lastTry ? 3 : 2
        Layout.fillWidth: true
    }
    WrappedCheckBox {
        id: consent
        objectName: "pinConsent"
        text: qsTrId("trivex-app-pin-consent")
        visible: dialog.lastTry && !dialog.locked
        Layout.fillWidth: true
    }
    footer: DialogButtons {
        Button {
            objectName: "pinCancel"
            text: qsTrId("trivex-app-cancel")
            onClicked: dialog.close()
        }
        Button {
            objectName: "pinAccept"
            text: qsTrId("trivex-app-ok")
            highlighted: true
            enabled: dialog.ready
            onClicked: dialog.submit()
        }
    }
}
