// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// A check box whose whole text can be read; most styles would cut it off.
CheckBox {
    id: box
    // A positioner: the height of a text that wraps would depend on itself when its size changes.
    contentItem: Item {
        implicitWidth: column.implicitWidth
        implicitHeight: column.implicitHeight
        FillColumn {
            id: column
            width: parent.width
            anchors.verticalCenter: parent.verticalCenter
            Label {
                textFormat: Text.PlainText
                text: box.text
                font: box.font
                wrapMode: Text.WordWrap
                leftPadding: box.indicator.width + box.spacing
                Layout.fillWidth: true
                Accessible.ignored: true
            }
        }
    }
}
