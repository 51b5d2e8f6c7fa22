// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// A search box: a magnifier, the text, a way to empty it. Escape empties it too.
TextField {
    id: field
    leftPadding: Theme.unit * 2 + Theme.iconSize
    rightPadding: clear.visible ? clear.width + Theme.unit : Theme.unit * 1.5
    placeholderText: qsTrId("trivex-app-search")
    Accessible.name: placeholderText
    Accessible.searchEdit: true
    inputMethodHints: Qt.ImhNoPredictiveText
    Keys.onEscapePressed: {
        event.accepted = length > 0
        clear_()
    }
    /// Empties the field; without the underscore it would hide the text field's own.
    function clear_() {
        text = ""
    }
    Icon {
        name: "search"
        x: Theme.unit * 1.25
        anchors.verticalCenter: parent.verticalCenter
    }
    ToolButton {
        id: clear
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        anchors.rightMargin: 2
        implicitHeight: field.height - 6
        implicitWidth: implicitHeight
        topPadding: 2
        bottomPadding: 2
        leftPadding: 2
        rightPadding: 2
        icon.source: Theme.icon("close")
        icon.width: Theme.iconSize * 0.7
        icon.height: Theme.iconSize * 0.7
        display: AbstractButton.IconOnly
        text: qsTrId("trivex-app-search-clear")
        visible: field.length > 0
        focusPolicy: Qt.NoFocus
        onClicked: field.clear_()
    }
}
