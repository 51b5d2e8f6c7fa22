// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15

/// Drags rows of a list out as files, to a file manager or a letter. It begins sideways: up and
/// down the list itself is moved.
Item {
    id: source
    /// Gives the URLs of the files, once the drag begins; none, and it does not begin.
    property var urls: null
    /// What was dragged last.
    property var files: []
    // internal
    property real fromX: 0
    // internal
    property real fromY: 0
    // internal
    property bool armed: false

    objectName: "rowDrag"
    Drag.dragType: Drag.Automatic
    Drag.supportedActions: Qt.CopyAction
    Drag.proposedAction: Qt.CopyAction

    /// Call it where a row is pressed.
    function press(mouse) {
        fromX = mouse.x
        fromY = mouse.y
        armed = urls !== null && mouse.button === Qt.LeftButton
    }
    /// Whether a drag begins with this movement.
    function isDrag(mouse) {
        const sideways = Math.abs(mouse.x - fromX)
        return armed && sideways >= Qt.styleHints.startDragDistance
            && sideways > Math.abs(mouse.y - fromY)
    }
    // internal
    function begin() {
        armed = false
        files = urls()
        if (files.length === 0)
            return
        Drag.mimeData = { "text/uri-list": files.join("\r\n") }
        // It is over when this returns.
        Drag.active = true
    }
}
