// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// Changes the PIN of a token, with `officer` the one of its administrator: `ask(storeId)`.
TokenAdminDialog {
    id: dialog
    /// Changes the administrator's own PIN, not the user's.
    property bool officer: false
    objectName: "changePinDialog"
    title: officer ? qsTrId("trivex-app-change-officer-pin-title")
                   : qsTrId("trivex-app-change-pin-title")
    byOfficer: officer
    confirmText: qsTrId("trivex-app-change")
    successText: qsTrId("trivex-app-pin-changed")
    complete: admin.pinPad || (before.text || !officer && admin.pinEmpty) && after.ready
    onOpened: before.focusField()
    onStarted: officer ? admin.changeOfficerPin(before.text, after.pin, mayBeLastTry)
                       : admin.changePin(before.text, after.pin, mayBeLastTry)
    onCleared: {
        if (!refused)
            before.clear()
        if (!wrong)
            after.clear()
        if (visible)
            refused ? after.focusField() : before.focusField()
    }

    SecretField {
        id: before
        field.objectName: "oldPin"
        visible: !dialog.admin.pinPad
        label: dialog.officer ? qsTrId("trivex-app-old-officer-pin") : qsTrId("trivex-app-old-pin")
        Layout.fillWidth: true
        onAccepted: after.focusField()
    }
    NewPinFields {
        id: after
        rules: dialog.admin
        visible: !dialog.admin.pinPad
        label: dialog.officer ? qsTrId("trivex-app-new-officer-pin") : qsTrId("trivex-app-new-pin")
        Layout.fillWidth: true
        onAccepted: dialog.submit()
    }
}
