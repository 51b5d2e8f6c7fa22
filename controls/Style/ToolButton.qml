// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import Trivex.Crypto.Controls 1.0

T.ToolButton {
    id: control

    implicitWidth: Math.max(Theme.controlHeight, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Theme.controlHeight
    padding: Theme.unit * 0.75
    spacing: Theme.unit
    font.pixelSize: Theme.fontSize
    icon.width: Theme.iconSize
    icon.height: Theme.iconSize
    icon.color: Theme.text
    opacity: enabled ? 1 : 0.55

    ToolTip.text: text
    ToolTip.visible: display === T.AbstractButton.IconOnly && (hovered || visualFocus)
    ToolTip.delay: 700
    Accessible.role: Accessible.Button
    Accessible.name: text
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: IconText {
        spacing: control.spacing
        mirrored: control.mirrored
        display: control.display
        icon: control.icon
        text: control.text
        font: control.font
        color: Theme.text
    }

    background: Rectangle {
        radius: Theme.radius
        color: control.down || control.checked ? Theme.pressed
            : control.hovered ? Theme.hover : "transparent"
        FocusFrame { of: control }
    }
}
