// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Trivex.Crypto.Controls 1.0

T.ScrollBar {
    id: control

    implicitWidth: orientation === Qt.Vertical ? 12 : 40
    implicitHeight: orientation === Qt.Vertical ? 40 : 12
    padding: 3
    minimumSize: 0.06
    visible: policy !== T.ScrollBar.AlwaysOff && size < 1
    focusPolicy: Qt.NoFocus
    Accessible.role: Accessible.ScrollBar
    Accessible.ignored: true

    contentItem: Rectangle {
        radius: Math.min(width, height) / 2
        color: control.pressed || control.hovered ? Theme.textDim : Theme.fieldBorder
        opacity: control.pressed || control.hovered ? 1 : 0.7
    }
    background: null
}
