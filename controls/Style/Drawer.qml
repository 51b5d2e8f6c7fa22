// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Trivex.Crypto.Controls 1.0

T.Drawer {
    id: control
    implicitWidth: contentWidth + leftPadding + rightPadding
    implicitHeight: contentHeight + topPadding + bottomPadding
    // Only these move the drawer: without them it stays outside of the window.
    enter: Transition { SmoothedAnimation { velocity: 5 } }
    exit: Transition { SmoothedAnimation { velocity: 5 } }
    background: Rectangle {
        color: Theme.panel
        Rectangle {
            x: parent.width - 1
            width: 1
            height: parent.height
            color: Theme.border
        }
    }
    T.Overlay.modal: Rectangle { color: Theme.shade }
    T.Overlay.modeless: Rectangle { color: "transparent" }
}
