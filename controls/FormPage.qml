// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Window 2.15
import Trivex.Crypto.Controls 1.0

/// A column that scrolls, as wide as its place up to `maximumWidth`, and in its middle. It keeps the
/// focused item visible, but leaves what is pressed with the mouse under it, unless one types into
/// it; `reveal` scrolls to an item that has just appeared, once its position is final.
Flickable {
    id: page
    /// The column is no wider.
    property real maximumWidth: Infinity
    /// The room that is left below the column.
    property real endSpace: Theme.unit * 4
    /// What the page holds, in a column.
    default property alias content: column.data
    /// The room between the things in the column.
    property alias spacing: column.spacing

    contentWidth: width
    contentHeight: column.implicitHeight + endSpace
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    Accessible.role: Accessible.Pane
    ScrollBar.vertical: ScrollBar { id: bar }

    /// Scrolls to an item inside, when it lies where it stays. The focus, which comes back when a
    /// dialog closes, takes nothing out of view meanwhile.
    function reveal(item) {
        revealed = item
        waitFor(item)
    }

    // internal
    property Item revealed
    // internal
    function waitFor(item) {
        awaited = item
        patience.restart()
        show(item)
    }

    // internal
    function take(item) {
        // A button that moved away between press and release would not be pressed at all. What is
        // typed into a field is to be seen.
        if (item.focusReason === Qt.MouseFocusReason && item.readOnly !== false)
            giveUp()
        else
            waitFor(frameOf(item) || item) // `framed` may be that of the focus before
    }
    // What is said of a value while it is typed is to be seen with its field.
    // internal
    readonly property Item framed: frameOf(focused)
    // internal
    function frameOf(item) {
        return item && item.parent instanceof LabeledField ? item.parent : null
    }
    Connections {
        target: page.framed
        function onHeightChanged() { page.follow() }
    }

    // internal
    property Item awaited
    // internal
    function show(item) {
        const margin = Theme.unit
        const top = Math.max(0, item.mapToItem(column, 0, 0).y - margin)
        const bottom = top + item.height + margin * 2
        const end = Math.max(0, contentHeight - height)
        // The beginning of an item that is taller than the page.
        if (top < contentY || bottom - top > height)
            contentY = Math.min(top, end)
        else if (bottom > contentY + height)
            contentY = Math.min(bottom - height, end)
    }
    // internal
    function showAwaited() {
        if (awaited)
            show(awaited)
    }
    onContentHeightChanged: showAwaited()
    onHeightChanged: showAwaited()
    onMovementStarted: giveUp()
    // internal
    function giveUp() {
        awaited = null
        revealed = null
    }
    Timer {
        id: patience
        interval: 400
        onTriggered: page.giveUp()
    }
    // internal
    readonly property Item focused: Window.activeFocusItem
    // internal
    function holds(inner) {
        for (let item = inner; item; item = item.parent) {
            if (item === column)
                return true
        }
        return false
    }
    onFocusedChanged: if (!revealed && holds(focused)) take(focused)
    // internal
    function follow() {
        if (!revealed && holds(framed))
            waitFor(framed)
    }

    FillColumn {
        id: column
        readonly property real room: page.width - (bar.visible ? bar.width : 0)
        x: Math.round((room - width) / 2)
        width: Math.min(room, page.maximumWidth)
        spacing: Theme.unit * 1.5
        onPositioningComplete: page.showAwaited()
    }
}
