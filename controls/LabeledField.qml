// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// A text field under its label, with a hint, and a flag that says what is wrong with its value.
/// The form decides whether to refuse the value.
FillColumn {
    id: labeled
    /// What the field is for; its name for screen readers too.
    property string label
    /// What is typed.
    property alias text: field.text
    /// The text field inside, for its limits and its signals.
    property alias field: field
    /// What may be typed, below the field.
    property string hint
    /// What is wrong with the value; shown in place of the hint.
    property string flag
    // Fields side by side share the width evenly.
    Layout.preferredWidth: 100
    spacing: 3
    Label {
        textFormat: Text.PlainText
        text: labeled.label
        color: Theme.textDim
        font.pixelSize: Theme.smallSize
        wrapMode: Text.WordWrap
        Layout.fillWidth: true
    }
    TextField {
        id: field
        Layout.fillWidth: true
        Layout.minimumWidth: 60
        Accessible.name: labeled.label
        Accessible.description: labeled.flag || labeled.hint
    }
    RowLayout {
        visible: labeled.flag.length > 0
        spacing: Theme.unit / 2
        Layout.fillWidth: true
        Icon {
            name: "warning"
            color: Theme.warn
            size: Theme.iconSize * 0.85
        }
        Label {
            textFormat: Text.PlainText
            text: labeled.flag
            color: Theme.warn
            font.pixelSize: Theme.smallSize
            wrapMode: Text.WordWrap
            Layout.fillWidth: true
            Accessible.role: Accessible.AlertMessage
        }
    }
    Label {
        textFormat: Text.PlainText
        text: labeled.hint
        visible: text.length > 0 && !labeled.flag
        color: Theme.textDim
        font.pixelSize: Theme.smallSize
        wrapMode: Text.WordWrap
        Layout.fillWidth: true
    }
}
