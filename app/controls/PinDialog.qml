// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// Asks for the PIN of one token: which token, what for, how many tries are left. The last try
/// needs a tick of consent. Ends in `submitted` or, however it is left, in `left`.
BaseDialog {
    id: dialog
    property string tokenName
    property string purposeText
    property string pinText
    property bool lastTry: false
    property bool locked: false
    readonly property bool ready: pin.length > 0 && (!lastTry || consent.checked) && !locked
    property bool answered: false
    signal submitted(string pin)
    signal left()

    objectName: "pinDialog"
    title: qsTrId("trivex-app-pin-title")
    preferredWidth: Theme.fontSize * 28

    /// Closes without an answer: the question is over.
    function withdraw() {
        answered = true
        close()
    }
    function submit() {
        if (!ready)
            return
        answered = true
        const text = pin.text
        close()
        submitted(text)
    }
    onAboutToShow: {
        answered = false
        pin.clear()
        consent.checked = false
    }
    onOpened: pin.forceActiveFocus(Qt.PopupFocusReason)
    onClosed: {
        pin.clear()
        if (!answered)
            left()
    }

    RowLayout {
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
                objectName: "pinTokenName"
                text: dialog.tokenName
                font.bold: true
                wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                Layout.fillWidth: true
            }
            Label {
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
        Accessible.name: qsTrId("trivex-app-pin-of").arg(dialog.tokenName)
        Accessible.description: dialog.pinText
        enabled: !dialog.locked
        Layout.fillWidth: true
        onAccepted: dialog.submit()
    }
    Notice {
        objectName: "pinTries"
        text: dialog.pinText
        level: dialog.locked || dialog.lastTry ? 3 : 2
        Layout.fillWidth: true
    }
    CheckBox {
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
