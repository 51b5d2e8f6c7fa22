// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// A field for a secret, with a button that shows it on the screen for as long as it is pressed in.
///
/// Programs that read the screen for somebody are not told the secret, shown or not: anything that
/// runs as the user can ask as they do. What names the field is `Accessible.name`; a placeholder
/// alone does not say whose secret is meant.
TextField {
    id: field
    // Qt gives such programs the text of an editable field's `textDocument` where it has one, else
    // its `text`, whatever the echo mode is. Empty and not dots: asked for the word at a place, Qt
    // looks without end in a text that has none.
    //
    // Asked before its binding was evaluated, as the styles of other hosts make Qt do, a "var" is
    // undefined, which is no document; a property of an object type would be a null pointer, which
    // Qt follows.
    readonly property var textDocument: nothing.textDocument
    echoMode: eye.checked ? TextInput.Normal : TextInput.Password
    inputMethodHints: Qt.ImhSensitiveData | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
    rightPadding: eye.width + Theme.unit
    Accessible.role: Accessible.EditableText
    // Where this is true Qt withholds the field's name too, and Qt's own styles set it. That the
    // field is a password's is told by its echo mode as well.
    Accessible.passwordEdit: false
    Accessible.onPasswordEditChanged: Accessible.passwordEdit = false
    // The next secret starts hidden.
    onVisibleChanged: eye.checked = false
    TextEdit {
        id: nothing
        visible: false
        Accessible.ignored: true
    }
    ToolButton {
        id: eye
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        anchors.rightMargin: 2
        implicitHeight: field.height - 6
        implicitWidth: implicitHeight
        topPadding: 2
        bottomPadding: 2
        leftPadding: 2
        rightPadding: 2
        checkable: true
        icon.source: Theme.icon(checked ? "eye-off" : "eye")
        icon.width: Theme.iconSize * 0.85
        icon.height: Theme.iconSize * 0.85
        display: AbstractButton.IconOnly
        text: checked ? qsTrId("trivex-app-secret-hide") : qsTrId("trivex-app-secret-show")
    }
}
