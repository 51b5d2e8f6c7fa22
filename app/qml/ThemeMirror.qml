// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto.Controls 1.0

/// What was chosen of the theme, as properties that settings can keep.
Item {
    id: mirror
    property int mode: 0
    property real textScale: 1
    onModeChanged: Theme.mode = mode
    onTextScaleChanged: Theme.textScale = textScale
    Connections {
        target: Theme
        function onModeChanged() { mirror.mode = Theme.mode }
        function onTextScaleChanged() { mirror.textScale = Theme.textScale }
    }
}
