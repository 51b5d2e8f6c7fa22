// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import Trivex.Crypto.Controls 1.0

T.MenuItem {
    id: control

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Theme.controlHeight
    horizontalPadding: Theme.unit * 1.5
    spacing: Theme.unit
    font.pixelSize: Theme.fontSize
    icon.width: Theme.iconSize
    icon.height: Theme.iconSize
    icon.color: Theme.textDim
    opacity: enabled ? 1 : 0.55

    Accessible.role: Accessible.MenuItem
    Accessible.name: text

    contentItem: IconText {
        spacing: control.spacing
        mirrored: control.mirrored
        display: control.display
        alignment: Qt.AlignLeft
        icon: control.icon
        text: control.text
        font: control.font
        color: Theme.text
    }
    background: Rectangle {
        radius: Theme.radius - 2
        color: control.highlighted ? Theme.hover : "transparent"
    }
}
