// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Trivex.Crypto.Controls 1.0

T.BusyIndicator {
    id: control

    implicitWidth: Theme.iconSize + leftPadding + rightPadding
    implicitHeight: Theme.iconSize + topPadding + bottomPadding
    padding: 2
    Accessible.role: Accessible.Animation

    contentItem: Item {
        visible: control.running
        Repeater {
            model: 8
            Rectangle {
                readonly property real angle: index * Math.PI / 4
                readonly property real reach: parent.width / 2 - width / 2
                width: Math.max(3, parent.width * 0.16)
                height: width
                radius: width / 2
                x: parent.width / 2 - width / 2 + reach * Math.cos(angle)
                y: parent.height / 2 - height / 2 + reach * Math.sin(angle)
                color: Theme.link
                opacity: 0.2 + 0.8 * ((index + 8 - steps.step) % 8) / 7
            }
        }
        Timer {
            id: steps
            property int step: 0
            interval: 110
            repeat: true
            running: control.running && control.visible
            onTriggered: step = (step + 1) % 8
        }
    }
}
