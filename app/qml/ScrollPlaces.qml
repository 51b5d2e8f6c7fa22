// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto.Tools 1.0

/// Where each category was left in the list that they share, and brings the list back there.
QtObject {
    id: places
    property SectionedModel rows
    property ListView view
    property var first: ({})
    property string key
    property bool waiting: false

    /// The rows are still those of the category before.
    function leaveFor(next) {
        first[key] = topRow()
        key = next
        waiting = true
        // The rows may be the same ones.
        Qt.callLater(arrive)
    }
    /// The first row that is seen whole; 0 at the very top, where its heading is above it.
    function topRow() {
        // The first category comes before the list.
        if (!view || view.contentY <= view.originY + 1)
            return 0
        for (let y = 1; y < view.height; y += 8) {
            const row = view.indexAt(view.width / 2, view.contentY + y)
            if (row >= 0)
                return row
        }
        return 0
    }
    function arrive() {
        const row = view ? Math.min(first[key] || 0, view.count - 1) : -1
        if (!waiting || row < 0)
            return
        if (row > 0)
            view.positionViewAtIndex(row, ListView.Beginning)
        else
            view.positionViewAtBeginning()
    }
    readonly property Connections changes: Connections {
        target: places.rows
        // The first change after that is the one to the new category.
        function onCountChanged() { places.settle() }
    }
    function settle() {
        if (!waiting)
            return
        arrive()
        waiting = false
    }
}
