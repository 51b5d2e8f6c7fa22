// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import Trivex.Crypto.Controls 1.0

/// A row of a list or a chooser whose text others wrote: in any style it is shown letter by letter.
/// The styles' own delegates take a tag in it for rich text and an ampersand for a mnemonic.
ItemDelegate {
    id: row
    contentItem: Label {
        textFormat: Text.PlainText
        text: row.text
        font: row.font
        color: row.highlighted ? Theme.link : Theme.text
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    background: Rectangle {
        color: row.highlighted ? Theme.selected : row.down ? Theme.pressed
            : row.hovered ? Theme.hover : Theme.card
    }
}
