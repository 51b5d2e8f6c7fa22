// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// A label with its value. The value wraps, can be selected and copied by mouse and keyboard;
/// `flag` says what is wrong with it.
GridLayout {
    id: row
    property string label
    property string value
    property bool fixedWidth: false
    property string flag
    readonly property bool stacked: width < Theme.fontSize * 24
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
        wrapMode: TextEdit.WrapAtWordBoundaryOrAnywhere
        color: Theme.text
        selectionColor: Theme.accent
        selectedTextColor: Theme.accentText
        font.pixelSize: Theme.fontSize
        font.family: row.fixedWidth ? Theme.fixedFamily : Qt.application.font.family
        Layout.fillWidth: true
        Layout.alignment: Qt.AlignTop
        Accessible.role: Accessible.EditableText
        Accessible.readOnly: true
        Accessible.name: row.label ? row.label + ": " + row.value : row.value
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
