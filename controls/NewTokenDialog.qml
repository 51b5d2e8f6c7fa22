// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Makes a private token: asks for its name and its PIN. `maker.available` says whether it can.
/// Whoever closes it while the token is made is told by `done` or `failed`; where it is open, a
/// failure is told in it.
BaseDialog {
    id: dialog
    /// Makes the token.
    property TokenMaker maker: TokenMaker {}
    // internal
    readonly property Connections ends: Connections {
        target: dialog.maker
        function onFinished() { dialog.take() }
    }
    /// Name and PIN are good, and nothing is being made.
    readonly property bool ready: maker.isName(name.text) && pin.ready && !maker.running
    /// Why the last making failed, as a sentence; empty before.
    property string problem
    /// The name that was asked for last.
    property string asked
    /// The token of that name is there.
    signal done(string name)
    /// None was made, and the dialog was closed before: what went wrong, and what to do.
    signal failed(string cause, string advice)

    objectName: "newTokenDialog"
    title: qsTrId("trivex-app-new-token-title")
    preferredWidth: Theme.fontSize * 30

    // internal
    function submit() {
        if (!ready)
            return
        problem = ""
        asked = name.text
        maker.make(asked, pin.pin)
    }
    // internal
    function take() {
        pin.clear()
        if (maker.error !== TokenAdmin.NoError) {
            if (left)
                failed(Texts.put(qsTrId("trivex-app-new-token-failed"), [asked]),
                       maker.message)
            else
                problem = maker.message
            return
        }
        close()
        done(maker.name)
    }
    onAboutToShow: {
        problem = ""
        pin.clear()
        name.text = qsTrId("trivex-app-new-token-name")
    }
    onOpened: {
        name.field.forceActiveFocus(Qt.OtherFocusReason)
        name.field.selectAll()
    }
    onClosed: pin.clear()

    Label {
        textFormat: Text.PlainText
        text: qsTrId("trivex-app-new-token-text")
        wrapMode: Text.WordWrap
        Layout.fillWidth: true
    }
    LabeledField {
        id: name
        field.objectName: "newTokenName"
        label: qsTrId("trivex-app-token-name")
        flag: text && !dialog.maker.isName(text) ? qsTrId("trivex-app-token-name-hint") : ""
        enabled: !dialog.maker.running
        Layout.fillWidth: true
        field.onAccepted: pin.focusField()
    }
    NewPinFields {
        id: pin
        rules: dialog.maker
        label: qsTrId("trivex-app-pin")
        enabled: !dialog.maker.running
        Layout.fillWidth: true
        onAccepted: dialog.submit()
    }
    Notice {
        text: qsTrId("trivex-app-new-token-officer")
        Layout.fillWidth: true
    }
    Notice {
        objectName: "newTokenProblem"
        level: 3
        text: dialog.problem
        Layout.fillWidth: true
    }
    footer: DialogButtons {
        Button {
            objectName: "newTokenCancel"
            text: qsTrId("trivex-app-cancel")
            onClicked: dialog.close()
        }
        Button {
            objectName: "newTokenConfirm"
            text: qsTrId("trivex-app-new-token-confirm")
            highlighted: true
            enabled: dialog.ready
            onClicked: dialog.submit()
        }
    }
}
