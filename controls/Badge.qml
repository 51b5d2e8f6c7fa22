// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// A validity, or anything else, as a word on a coloured ground; the word alone says it all.
Rectangle {
    id: badge
    /// A `Validity.State`, for word and colours.
    property int validity: Validity.Unknown
    /// The word; the validity's own where nothing else is assigned.
    property string text: Validity.word(validity)
    /// The colour of the word.
    property color ink: Theme.stateColor(validity)
    implicitWidth: label.implicitWidth + Theme.unit * 2
    implicitHeight: label.implicitHeight + Theme.unit * 0.6
    radius: height / 2
    color: Theme.stateGround(validity)
    visible: text.length > 0
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Text {
        textFormat: Text.PlainText
        id: label
        anchors.centerIn: parent
        text: badge.text
        font.pixelSize: Theme.smallSize
        font.bold: true
        color: badge.ink
        Accessible.ignored: true
    }
}
