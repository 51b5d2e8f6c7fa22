// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// A framed group of things, with a heading when `title` is set.
Rectangle {
    id: card
    /// The heading; there is none while it is empty.
    property string title
    /// The room between the frame and what is in it.
    property real padding: Theme.unit * 2
    /// What the frame holds, in a column.
    default property alias content: column.data
    /// The room between the things in the column.
    property alias spacing: column.spacing
    implicitWidth: 240
    implicitHeight: column.implicitHeight + padding * 2
    radius: Theme.radius + 4
    color: Theme.card
    border.color: Theme.border
    Accessible.role: Accessible.Grouping
    Accessible.name: title
    FillColumn {
        id: column
        x: card.padding
        y: card.padding
        width: card.width - card.padding * 2
        spacing: Theme.unit
        Label {
            textFormat: Text.PlainText
            text: card.title
            visible: text.length > 0
            font.pixelSize: Theme.smallSize
            font.bold: true
            font.capitalization: Font.AllUppercase
            font.letterSpacing: 0.5
            color: Theme.textDim
            Accessible.role: Accessible.Heading
        }
    }
}
