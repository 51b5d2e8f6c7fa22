// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Trivex.Crypto.Controls 1.0

T.Switch {
    id: control

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(Theme.controlHeight, implicitContentHeight + topPadding + bottomPadding)
    padding: Theme.unit * 0.5
    spacing: Theme.unit
    font.pixelSize: Theme.fontSize

    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checked: checked

    indicator: Rectangle {
        x: control.leftPadding
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.iconSize * 2
        height: Theme.iconSize * 1.1
        radius: height / 2
        color: control.checked ? Theme.accent : Theme.fieldBorder
        Rectangle {
            x: control.checked ? parent.width - width - 3 : 3
            anchors.verticalCenter: parent.verticalCenter
            width: parent.height - 6
            height: width
            radius: width / 2
            color: Theme.card
        }
        FocusFrame { of: control; radius: parent.radius + 3 }
    }

    contentItem: Text {
        textFormat: Text.PlainText
        leftPadding: control.indicator.width + control.spacing
        text: control.text
        font: control.font
        color: Theme.text
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WordWrap
    }
}
