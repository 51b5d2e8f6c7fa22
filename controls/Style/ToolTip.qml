// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Trivex.Crypto.Controls 1.0

T.ToolTip {
    id: control
    x: parent ? (parent.width - implicitWidth) / 2 : 0
    y: -implicitHeight - 6
    implicitWidth: contentWidth + leftPadding + rightPadding
    implicitHeight: contentHeight + topPadding + bottomPadding
    margins: 6
    padding: Theme.unit
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
        | T.Popup.CloseOnReleaseOutsideParent
    contentItem: Text {
        textFormat: Text.PlainText
        text: control.text
        font.pixelSize: Theme.smallSize
        color: Theme.window
    }
    background: Rectangle {
        radius: 6
        color: Theme.text
    }
}
