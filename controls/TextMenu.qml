// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import Trivex.Crypto.Controls 1.0

/// Cut, Copy, Paste and Select all for the text field, or the text that can be selected, in which it
/// lies: by the right button, by the Menu key and by Shift+F10. The field forwards its keys:
/// `Keys.forwardTo: textMenu`. Nothing of a secret goes to the clipboard.
Item {
    id: holder
    /// What the menu acts on: a text field, or a text that can be selected.
    property Item field: parent
    // internal
    readonly property bool isSecret: field !== null && field.echoMode !== undefined
        && (field.echoMode !== TextInput.Normal || field.inputMethodHints & Qt.ImhSensitiveData)
    /// Until the field has the keys again.
    readonly property bool isOpen: returning || loader.item !== null && loader.item.visible
    // internal
    property bool returning: false
    anchors.fill: parent

    /// Beside the cursor, or at a place of the field.
    function show(x, y) {
        // Else the selection would go with the focus.
        field.persistentSelection = true
        loader.active = true
        loader.item.popup(holder, x, y)
    }
    /// Opens it beside the text cursor.
    function showAtCursor() {
        const place = field.cursorRectangle
        show(place.x, place.y + place.height)
    }
    Keys.onPressed: {
        const asked = event.key === Qt.Key_Menu
            || event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier
        event.accepted = asked
        if (asked)
            showAtCursor()
    }
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.RightButton
        cursorShape: Qt.IBeamCursor
        onPressed: {
            holder.field.forceActiveFocus(Qt.MouseFocusReason)
            if (holder.field.selectionStart === holder.field.selectionEnd)
                holder.field.cursorPosition = holder.field.positionAt(mouse.x, mouse.y)
        }
        onReleased: holder.show(mouse.x, mouse.y)
    }
    Loader {
        id: loader
        active: false
        sourceComponent: Menu {
            objectName: "textMenu"
            readonly property bool hasSelection: holder.field.selectionStart < holder.field.selectionEnd
            readonly property bool isEditable: !holder.field.readOnly
            onClosed: {
                holder.returning = true
                holder.field.forceActiveFocus(Qt.PopupFocusReason)
                holder.field.persistentSelection = false
                holder.returning = false
            }
            MenuItem {
                objectName: "textCut"
                text: qsTrId("trivex-app-text-cut")
                enabled: hasSelection && isEditable && !holder.isSecret
                onTriggered: holder.field.cut()
            }
            MenuItem {
                objectName: "textCopy"
                text: qsTrId("trivex-app-text-copy")
                enabled: hasSelection && !holder.isSecret
                onTriggered: holder.field.copy()
            }
            MenuItem {
                objectName: "textPaste"
                text: qsTrId("trivex-app-text-paste")
                enabled: isEditable && holder.field.canPaste
                onTriggered: holder.field.paste()
            }
            MenuItem {
                objectName: "textSelectAll"
                text: qsTrId("trivex-app-text-all")
                enabled: holder.field.length > 0
                onTriggered: holder.field.selectAll()
            }
        }
    }
}
