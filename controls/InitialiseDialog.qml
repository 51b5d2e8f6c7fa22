// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Makes a token anew, with nothing on it: `ask(storeId)`. To agree one types the token's name.
TokenAdminDialog {
    id: dialog
    objectName: "initialiseDialog"
    title: qsTrId("trivex-app-initialise-title")
    byOfficer: true
    destructive: true
    confirmText: qsTrId("trivex-app-initialise-confirm")
    successText: qsTrId("trivex-app-initialised")
    resultName: newName.text
    complete: typed.text === tokenName && tokenName && admin.isName(newName.text)
        && (admin.pinPad || officer.text && after.ready)
    onOpened: typed.field.forceActiveFocus(Qt.OtherFocusReason)
    onStarted: admin.initialise(newName.text, officer.text, after.pin, mayBeLastTry)
    onCleared: {
        if (!wrong && !refused) {
            typed.text = ""
            newName.text = dialog.admin.label
        }
        if (!refused)
            officer.clear()
        if (!wrong)
            after.clear()
        if (visible)
            refused ? after.focusField() : officer.focusField()
    }

    Notice {
        objectName: "initialiseWarning"
        level: 3
        text: Texts.put(qsTrId("trivex-app-initialise-warning"), [dialog.tokenName])
        detail: dialog.admin.lossText
        Layout.fillWidth: true
    }
    LabeledField {
        id: typed
        field.objectName: "initialiseConsent"
        label: Texts.put(qsTrId("trivex-app-initialise-consent"), [dialog.tokenName])
        Layout.fillWidth: true
    }
    LabeledField {
        id: newName
        field.objectName: "initialiseName"
        label: qsTrId("trivex-app-token-new-name")
        hint: qsTrId("trivex-app-initialise-names")
        flag: text && !dialog.admin.isName(text) ? qsTrId("trivex-app-token-name-hint") : ""
        Layout.fillWidth: true
    }
    SecretField {
        id: officer
        field.objectName: "officerPin"
        visible: !dialog.admin.pinPad
        label: qsTrId("trivex-app-officer-pin")
        Layout.fillWidth: true
        onAccepted: after.focusField()
    }
    NewPinFields {
        id: after
        rules: dialog.admin
        visible: !dialog.admin.pinPad
        Layout.fillWidth: true
        onAccepted: dialog.submit()
    }
}
