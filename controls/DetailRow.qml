// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// A label with its value. The value wraps, can be selected and copied by mouse, keyboard and menu:
/// what is selected, or all of it where nothing is. `flag` says what is wrong with it.
GridLayout {
    id: row
    /// What the value is.
    property string label
    /// The value, which may have several lines.
    property string value
    /// Shows the value in letters of one width, as bytes are.
    property bool fixedWidth: false
    /// A line may end at any character: there are no words in it.
    property bool wordless: false
    /// What is wrong with the value; nothing while it is empty.
    property string flag
    /// The value, or a part of it, was put on the clipboard.
    signal copied()
    /// The value is below its label: beside it there is no room.
    readonly property bool stacked: width < Theme.fontSize * 24
    // Octets stay whole, and every line but the last has as many.
    // internal
    readonly property bool octets: fixedWidth && /^([0-9A-F]{2}:){7}/.test(row.value)
    // Of a line of the value.
    // internal
    readonly property real room: stacked || !label ? width : width * 0.62 - columnSpacing
    // Lines of PEM stay whole where letters of that size can still be read, and are halved else: a
    // line that ends with four letters on a line of their own is hard to follow.
    // internal
    readonly property bool halved: wordless && room - 2 < pemLine.advanceWidth * 0.75
    // internal
    readonly property int fittingSize:
        Theme.fontSize * (halved ? 1 : Math.min(1, (room - 2) / pemLine.advanceWidth))
    /// Puts a text on the clipboard, and tells by `copied`.
    function copy(text) {
        Desktop.copy(text)
        copied()
    }
    /// Opens the menu of the value at a point of this item.
    function openMenu(x, y) {
        const menu = menuOfValue.createObject(value, {
            label: row.label, value: row.value, part: value.selectedText })
        menu.popup(x, y, menu.itemAt(0))
    }
    columns: stacked ? 1 : 2
    columnSpacing: Theme.unit * 1.5
    rowSpacing: 1
    Label {
        textFormat: Text.PlainText
        text: row.label
        // A value that needs no word has the whole line.
        visible: text.length > 0
        color: Theme.textDim
        wrapMode: Text.WordWrap
        Layout.preferredWidth: row.stacked ? row.width : row.width * 0.38
        Layout.maximumWidth: Layout.preferredWidth
        Layout.alignment: Qt.AlignTop
    }
    TextEdit {
        textFormat: Text.PlainText
        id: value
        text: row.value
        readOnly: true
        selectByMouse: true
        persistentSelection: false
        activeFocusOnTab: true
        wrapMode: row.wordless || row.octets ? TextEdit.WrapAnywhere
            : TextEdit.WrapAtWordBoundaryOrAnywhere
        color: Theme.text
        selectionColor: Theme.accent
        selectedTextColor: Theme.accentText
        font.pixelSize: row.wordless ? row.fittingSize : Theme.fontSize
        font.family: row.fixedWidth ? Theme.fixedFamily : Qt.application.font.family
        Layout.fillWidth: true
        Layout.rightMargin: row.octets ? (row.room - 2) % Math.max(1, octet.advanceWidth)
            : row.halved ? Math.max(0, row.room - 3 - pemLine.advanceWidth / 2) : 0
        Layout.alignment: Qt.AlignTop
        Accessible.role: Accessible.EditableText
        Accessible.readOnly: true
        Accessible.name: row.label ? row.label + ": " + row.value : row.value
        Keys.onShortcutOverride: event.accepted = event.matches(StandardKey.Copy)
        Keys.onPressed: {
            if (event.matches(StandardKey.Copy)) {
                row.copy(selectedText.length > 0 ? selectedText : row.value)
                event.accepted = true
            } else if (event.key === Qt.Key_Menu
                       || (event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier)) {
                row.openMenu(0, height)
                event.accepted = true
            }
        }
        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.RightButton
            cursorShape: Qt.IBeamCursor
            onClicked: row.openMenu(mouse.x, mouse.y)
        }
        Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
        Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
        onActiveFocusChanged: activeFocus ? cursorPosition = 0 : deselect()
        Rectangle {
            anchors.fill: parent
            anchors.margins: -3
            color: "transparent"
            radius: 4
            border.width: Theme.focusWidth
            border.color: Theme.link
            visible: value.activeFocus
        }
    }
    TextMetrics {
        id: octet
        font: value.font
        text: "00:"
    }
    TextMetrics {
        id: pemLine
        font.family: Theme.fixedFamily
        font.pixelSize: Theme.fontSize
        text: "M".repeat(64)
    }
    Component {
        id: menuOfValue
        DetailMenu {
            onCopied: row.copy(text)
            onClosed: destroy()
        }
    }
    Item {
        visible: row.flag.length > 0 && !row.stacked
        Layout.preferredWidth: row.width * 0.38
    }
    RowLayout {
        visible: row.flag.length > 0
        Layout.fillWidth: true
        Icon {
            name: "warning"
            color: Theme.warn
        }
        Label {
            textFormat: Text.PlainText
            text: row.flag
            color: Theme.warn
            font.pixelSize: Theme.smallSize
            wrapMode: Text.WordWrap
            Layout.fillWidth: true
        }
    }
}
