// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Window 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Trivex.Crypto.Controls 1.0

T.Menu {
    id: control

    implicitWidth: Math.max(200, contentWidth + leftPadding + rightPadding)
    implicitHeight: contentHeight + topPadding + bottomPadding
    margins: 0
    padding: 4
    overlap: 1
    delegate: MenuItem {}

    contentItem: ListView {
        implicitHeight: contentHeight
        model: control.contentModel
        interactive: Window.window ? contentHeight > Window.window.height : false
        clip: true
        currentIndex: control.currentIndex
        Accessible.role: Accessible.PopupMenu
        Accessible.name: control.title
    }
    background: Rectangle {
        radius: Theme.radius
        color: Theme.card
        border.color: Theme.border
    }
    T.Overlay.modal: Rectangle { color: Theme.shade }
    T.Overlay.modeless: Rectangle { color: "transparent" }
}
