// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0

/// The title of a page, with the menu button of narrow windows or a way back, and its actions.
RowLayout {
    id: header
    property string title
    property bool menuVisible: false
    property bool backVisible: false
    default property alias actions: actionRow.data
    signal menuAsked()
    signal backAsked()
    spacing: Theme.unit
    implicitHeight: Theme.controlHeight
    ToolButton {
        objectName: "menuButton"
        icon.source: Theme.icon("menu")
        display: AbstractButton.IconOnly
        text: qsTrId("trivex-app-menu")
        visible: header.menuVisible && !header.backVisible
        onClicked: header.menuAsked()
    }
    ToolButton {
        objectName: "backButton"
        icon.source: Theme.icon("back")
        display: AbstractButton.IconOnly
        text: qsTrId("trivex-app-back")
        visible: header.backVisible
        onClicked: header.backAsked()
    }
    Label {
        textFormat: Text.PlainText
        text: header.title
        font.pixelSize: Theme.titleSize
        font.bold: true
        elide: Text.ElideRight
        Layout.fillWidth: true
        Accessible.role: Accessible.Heading
    }
    RowLayout {
        id: actionRow
        spacing: Theme.unit
    }
}
