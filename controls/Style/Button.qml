// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import Trivex.Crypto.Controls 1.0

T.Button {
    id: control

    implicitWidth: Math.max(implicitBackgroundWidth, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Theme.controlHeight
    horizontalPadding: Theme.unit * 1.75
    verticalPadding: 0
    spacing: Theme.unit
    font.pixelSize: Theme.fontSize
    icon.width: Theme.iconSize
    icon.height: Theme.iconSize
    icon.color: ink
    opacity: enabled ? 1 : 0.55

    readonly property color ink: highlighted ? Theme.accentText : Theme.text

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
        color: control.ink
    }

    background: Rectangle {
        radius: Theme.radius
        color: control.highlighted
            ? (control.hovered || control.down ? Theme.accentHover : Theme.accent)
            : control.down || control.checked ? Theme.pressed
            : control.hovered ? Theme.hover : control.flat ? "transparent" : Theme.card
        border.width: control.flat || control.highlighted ? 0 : 1
        border.color: Theme.border
        FocusFrame { of: control }
    }
}
