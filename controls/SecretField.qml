// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// A PasswordField under its label, with a hint, and a flag that says what is wrong with it.
FillColumn {
    id: labeled
    /// What the field is for.
    property string label
    /// What may be typed, below the field.
    property string hint
    /// What is wrong with the value.
    property string flag
    /// What is typed.
    property alias text: field.text
    /// The `PasswordField` inside.
    property alias field: field
    /// Enter was pressed.
    signal accepted()
    spacing: 3
    /// Forgets what is typed.
    function clear() { field.clear() }
    /// Moves the focus to the field.
    function focusField() { field.forceActiveFocus(Qt.OtherFocusReason) }
    Label {
        textFormat: Text.PlainText
        text: labeled.label
        color: Theme.textDim
        font.pixelSize: Theme.smallSize
        wrapMode: Text.WordWrap
        Layout.fillWidth: true
        Accessible.ignored: true
    }
    PasswordField {
        id: field
        Layout.fillWidth: true
        Accessible.name: labeled.label
        Accessible.description: labeled.flag || labeled.hint
        onAccepted: labeled.accepted()
    }
    Label {
        textFormat: Text.PlainText
        text: labeled.flag || labeled.hint
        visible: text.length > 0
        color: labeled.flag ? Theme.warn : Theme.textDim
        font.pixelSize: Theme.smallSize
        wrapMode: Text.WordWrap
        Layout.fillWidth: true
        Accessible.role: labeled.flag ? Accessible.AlertMessage : Accessible.StaticText
    }
}
