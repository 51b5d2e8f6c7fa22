// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Window 2.15
import Trivex.Crypto.Controls 1.0

/// What was chosen of the theme, as properties that settings can keep. What they kept of the window's
/// size is taken back where its screen is smaller than the one of that time.
Item {
    id: mirror
    property int mode: 0
    property real textScale: 1
    property Window window
    Component.onCompleted: {
        // As it was left, which may have been on another screen.
        window.width = Math.min(Math.max(window.width, window.minimumWidth),
                                Screen.desktopAvailableWidth)
        window.height = Math.min(Math.max(window.height, window.minimumHeight),
                                 Screen.desktopAvailableHeight)
    }
    onModeChanged: Theme.mode = mode
    onTextScaleChanged: Theme.textScale = textScale
    Connections {
        target: Theme
        function onModeChanged() { mirror.mode = Theme.mode }
        function onTextScaleChanged() { mirror.textScale = Theme.textScale }
    }
}
