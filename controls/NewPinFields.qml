// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// A new PIN, typed twice, with the token's rules of length told before one types.
FillColumn {
    id: fields
    /// Who knows the rules: a TokenAdmin or a TokenMaker.
    property QtObject rules
    /// What stands above the first field.
    property string label: qsTrId("trivex-app-new-pin")
    /// What was typed in the first field.
    readonly property string pin: first.text
    /// Both fields hold the same PIN, of a length that the token takes.
    readonly property bool ready: rules !== null && rules.fits(first.text) && first.text === second.text
    /// Enter was pressed in the second field.
    signal accepted()
    spacing: Theme.unit
    /// Empties both fields.
    function clear() {
        first.clear()
        second.clear()
    }
    /// Moves the focus to the first field.
    function focusField() { first.focusField() }
    SecretField {
        id: first
        field.objectName: "newPin"
        label: fields.label
        hint: fields.rules ? fields.rules.lengthText : ""
        // Not while it is being typed.
        flag: fields.rules && text && !field.activeFocus && !fields.rules.fits(text)
            ? [qsTrId("trivex-app-pin-length-wrong"), fields.rules.lengthText].join(" ") : ""
        Layout.fillWidth: true
        onAccepted: second.focusField()
    }
    SecretField {
        id: second
        field.objectName: "newPinAgain"
        label: qsTrId("trivex-app-new-pin-again")
        flag: text && !first.text.startsWith(text) || text && !field.activeFocus && text !== first.text
            ? qsTrId("trivex-app-pins-differ") : ""
        Layout.fillWidth: true
        onAccepted: fields.accepted()
    }
}
