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

    /// Of the widest item: by itself a menu takes no notice of them, and they would be cut.
    readonly property real widest: {
        let most = 0
        for (let i = 0; i < count; ++i) {
            const item = itemAt(i)
            // What takes no room may be as long as it likes.
            if (item && item.height > 0)
                most = Math.max(most, item.implicitWidth)
        }
        return most
    }
    readonly property real room: parent && parent.Window.window
        ? parent.Window.window.width - 2 * margins : Infinity

    implicitWidth: Math.min(room, Math.max(Theme.fontSize * 15, widest + leftPadding + rightPadding))
    implicitHeight: contentHeight + topPadding + bottomPadding
    margins: Theme.unit / 2
    padding: 4
    overlap: 1
    delegate: MenuItem {}

    contentItem: ListView {
        implicitHeight: contentHeight
        model: control.contentModel
        interactive: Window.window ? contentHeight > Window.window.height : false
        clip: true
        currentIndex: -1
        Accessible.role: Accessible.PopupMenu
        Accessible.name: control.title
    }
    // No binding: a line that scrolls below the pointer is the current one within this very change.
    onCurrentIndexChanged: contentItem.currentIndex = currentIndex
    background: Rectangle {
        radius: Theme.radius
        color: Theme.card
        border.color: Theme.border
    }
    T.Overlay.modal: Rectangle { color: Theme.shade }
    T.Overlay.modeless: Rectangle { color: "transparent" }
}
