// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// Sets the PIN of a token by the one of its administrator, where the PIN is locked, forgotten or
/// was never set: `ask(storeId)`.
TokenAdminDialog {
    id: dialog
    objectName: "unblockDialog"
    title: admin.pinSet ? qsTrId("trivex-app-unblock-pin-title")
                        : qsTrId("trivex-app-set-pin-title")
    confirmText: admin.pinSet ? qsTrId("trivex-app-unblock") : qsTrId("trivex-app-set-it")
    byOfficer: true
    successText: qsTrId("trivex-app-pin-was-set")
    complete: admin.pinPad || (officer.text || admin.officerPinEmpty) && after.ready
    onOpened: officer.focusField()
    onStarted: admin.setPin(officer.text, after.pin, mayBeLastTry)
    onCleared: {
        if (!refused)
            officer.clear()
        if (!wrong)
            after.clear()
        if (visible)
            refused ? after.focusField() : officer.focusField()
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
