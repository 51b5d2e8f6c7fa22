// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls.impl 2.15
import Trivex.Crypto.Controls 1.0

/// One of the module's monochrome icons, in the colour of its surroundings. Decoration: words
/// beside it say what it means.
ColorImage {
    /// The name of the icon.
    property string name
    /// Its width and height.
    property real size: Theme.iconSize
    width: size
    height: size
    sourceSize: Qt.size(size, size)
    source: name ? Theme.icon(name) : ""
    color: Theme.textDim
    Accessible.ignored: true
}
