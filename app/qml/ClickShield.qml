// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15

/// Takes the second click of a double click whose first one has put something else in this place.
MouseArea {
    id: shield
    property point at
    z: 1
    enabled: clock.running
    acceptedButtons: Qt.LeftButton

    /// `place` is where the first click was, in the window.
    function guard(place) {
        at = place
        clock.restart()
    }
    onPressed: {
        const here = mapToItem(null, mouse.x, mouse.y)
        mouse.accepted = Math.abs(here.x - at.x) + Math.abs(here.y - at.y)
            < 2 * Qt.styleHints.startDragDistance
    }
    Timer {
        id: clock
        interval: Qt.styleHints.mouseDoubleClickInterval
    }
}
