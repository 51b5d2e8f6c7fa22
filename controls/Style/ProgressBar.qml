// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Trivex.Crypto.Controls 1.0

T.ProgressBar {
    id: control

    implicitWidth: 200
    implicitHeight: 6
    Accessible.role: Accessible.ProgressBar

    contentItem: Item {
        clip: true
        Rectangle {
            id: bar
            height: parent.height
            width: control.indeterminate ? parent.width * 0.3 : control.visualPosition * parent.width
            radius: 3
            color: Theme.good
            // A still bar would look stuck while the progress is unknown.
            NumberAnimation on x {
                running: control.indeterminate && control.visible
                loops: Animation.Infinite
                from: -bar.width
                to: control.width
                duration: 1400
                onStopped: bar.x = 0
            }
        }
    }
    background: Rectangle {
        implicitHeight: 6
        radius: 3
        color: Theme.neutralSoft
    }
}
