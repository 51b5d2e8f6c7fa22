// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import Trivex.Crypto.Controls 1.0

/// A check box whose whole text can be read; most styles would cut it off.
CheckBox {
    id: box
    contentItem: Label {
        textFormat: Text.PlainText
        text: box.text
        font: box.font
        wrapMode: Text.WordWrap
        leftPadding: box.indicator.width + box.spacing
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
}
