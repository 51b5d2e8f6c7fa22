// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import Trivex.Crypto.Controls 1.0

T.ItemDelegate {
    id: control

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(Theme.controlHeight, implicitContentHeight + topPadding + bottomPadding)
    padding: Theme.unit
    horizontalPadding: Theme.unit * 1.5
    spacing: Theme.unit * 1.5
    font.pixelSize: Theme.fontSize
    icon.width: Theme.iconSize
    icon.height: Theme.iconSize
    icon.color: highlighted ? Theme.link : Theme.textDim

    Accessible.role: Accessible.ListItem
    Accessible.name: text

    contentItem: IconText {
        spacing: control.spacing
        mirrored: control.mirrored
        display: control.display
        alignment: Qt.AlignLeft
        icon: control.icon
        text: control.text
        font: control.font
        color: control.highlighted ? Theme.link : Theme.text
    }

    background: Rectangle {
        radius: Theme.radius
        color: control.highlighted ? Theme.selected
            : control.down ? Theme.pressed : control.hovered ? Theme.hover : "transparent"
        FocusFrame {
            of: control
            anchors.margins: 1
            radius: Theme.radius
        }
    }
}
