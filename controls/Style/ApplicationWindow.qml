// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Trivex.Crypto.Controls 1.0

T.ApplicationWindow {
    id: window
    color: Theme.window
    font.pixelSize: Theme.fontSize
    palette.window: Theme.window
    palette.windowText: Theme.text
    palette.text: Theme.text
    palette.base: Theme.field
    palette.highlight: Theme.accent
    palette.highlightedText: Theme.accentText
    overlay.modal: Rectangle { color: Theme.shade }
    overlay.modeless: Rectangle { color: "transparent" }
}
