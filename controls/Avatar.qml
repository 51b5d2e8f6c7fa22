// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// The round mark with a name's first letter, in the colours of its validity.
Rectangle {
    id: avatar
    /// The letter that is shown: usually the first of a name.
    property string letter
    /// Instead of a letter.
    property string icon
    /// A `Validity.State`, whose colours the mark has.
    property int validity: Validity.Unknown
    /// Its width and height.
    property real size: Math.round(Theme.fontSize * 2.5)
    implicitWidth: size
    implicitHeight: size
    width: size
    height: size
    radius: size / 2
    color: Theme.stateGround(validity)
    Accessible.ignored: true
    Text {
        textFormat: Text.PlainText
        anchors.centerIn: parent
        text: avatar.icon ? "" : avatar.letter
        font.pixelSize: Theme.fontSize * 1.05
        font.bold: true
        color: Theme.stateColor(avatar.validity)
        Accessible.ignored: true
    }
    Icon {
        anchors.centerIn: parent
        visible: avatar.icon.length > 0
        name: avatar.icon ? avatar.icon : "key"
        color: Theme.stateColor(avatar.validity)
    }
}
