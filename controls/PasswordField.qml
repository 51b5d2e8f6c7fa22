// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// A field for a secret, with a button that shows it on the screen for as long as it is pressed in.
///
/// Screen readers don't get the secret, shown or not, because every program of the user can ask as
/// they do. Set `Accessible.name` to name the field; a placeholder alone does not say whose secret
/// is meant.
///
/// What was typed is wiped as soon as neither the field nor a script holds it; after `clear()` it
/// cannot be undone.
TextField {
    id: field
    // Qt gives such programs the text of an editable field's `textDocument` where it has one, else
    // its `text`, whatever the echo mode is. Empty and not dots: asked for the word at a place, Qt
    // looks without end in a text that has none.
    //
    // The styles of other hosts make Qt ask before the binding is evaluated. A "var" is undefined
    // then, which is no document; a property of an object type would be a null pointer, which Qt
    // follows.
    // internal
    readonly property var textDocument: nothing.textDocument
    echoMode: eye.checked ? TextInput.Normal : TextInput.Password
    inputMethodHints: Qt.ImhSensitiveData | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
    rightPadding: eye.width + Theme.unit
    Accessible.role: Accessible.EditableText
    // If this is true, as Qt's own styles set it, Qt withholds the field's name too. The echo mode
    // also says that this is a password field.
    Accessible.passwordEdit: false
    Accessible.onPasswordEditChanged: Accessible.passwordEdit = false
    // The next secret starts hidden.
    onVisibleChanged: eye.checked = false
    SecretGuard {
        field: field
    }
    TextEdit {
        textFormat: Text.PlainText
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
