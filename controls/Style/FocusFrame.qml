// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Trivex.Crypto.Controls 1.0

/// The frame that shows where the keyboard is.
Rectangle {
    property Item of: parent
    anchors.fill: parent
    anchors.margins: -3
    radius: Theme.radius + 3
    color: "transparent"
    border.width: Theme.focusWidth
    border.color: Theme.link
    visible: of.visualFocus
}
