// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import QtQuick.Window 2.15
import Trivex.Crypto.Controls 1.0

/// The base of all dialogs: centred in the window and never wider than it, scrolls when too tall,
/// closes with Escape. Enter presses the highlighted button of its footer, if that is enabled, where
/// the control that has the focus has no use for it. Its content is a column. Opens with the focus
/// at its first control, unless one of them asks for it with `focus: true`.
///
/// It draws its own background and title: some styles have no background with the software
/// renderer, and most cut off a long title.
Dialog {
    id: dialog
    /// The width that it has where the window leaves room for it.
    property real preferredWidth: Theme.fontSize * 33
    /// The content, in a column.
    default property alias body: column.data
    /// It is closed, or on its way there: what happens now is not seen in it.
    property bool left: true
    parent: Overlay.overlay
    anchors.centerIn: parent
    width: parent ? Math.min(preferredWidth, parent.width - Theme.unit * 3) : preferredWidth
    height: parent ? Math.min(implicitHeight, parent.height - Theme.unit * 3) : implicitHeight
    modal: true
    focus: true
    closePolicy: Popup.CloseOnEscape
    contentHeight: column.implicitHeight
    /// What has the keys whenever it opens, such as the harmless answer. Without it a dialog that
    /// opens again gives them to what was pressed last.
    property Item initialFocus: null
    onAboutToShow: {
        left = false
        if (initialFocus)
            initialFocus.focus = true
    }
    onAboutToHide: left = true
    onOpened: focusFirst()
    padding: Theme.unit * 2.5
    topPadding: Theme.unit
    bottomPadding: Theme.unit
    palette {
        window: Theme.card
        windowText: Theme.text
        base: Theme.field
        text: Theme.text
        highlight: Theme.accent
        highlightedText: Theme.accentText
    }
    background: Rectangle {
        radius: Theme.radius + 4
        color: Theme.card
        border.color: Theme.border
    }
    header: Label {
        textFormat: Text.PlainText
        text: dialog.title
        visible: text.length > 0
        wrapMode: Text.WordWrap
        padding: Theme.unit * 2.5
        bottomPadding: Theme.unit
        font.pixelSize: Theme.headingSize
        font.bold: true
        Accessible.role: Accessible.Heading
    }

    /// Moves the focus to the first control, unless a visible control of this dialog has it.
    function focusFirst() {
        const frame = contentItem.parent
        const now = frame.Window.activeFocusItem
        for (let item = now; item && now.visible; item = item.parent) {
            if (item.parent === frame)
                return
        }
        const first = frame.nextItemInFocusChain(true)
        if (first)
            first.forceActiveFocus(Qt.PopupFocusReason)
    }
    // internal
    function defaultButton(item) {
        for (let i = 0; item && i < item.children.length; ++i) {
            const child = item.children[i]
            const found = child.highlighted === true && child.visible ? child : defaultButton(child)
            if (found)
                return found
        }
        return null
    }
    /// Not while it closes: the key that closed it may come here too.
    function acceptDefault() {
        const button = opened ? defaultButton(footer) : null
        if (button && button.enabled)
            button.clicked()
    }
    contentItem: Flickable {
        id: flick
        // For controls that keep Enter from their parents though they have no use for it.
        function acceptDefault() {
            dialog.acceptDefault()
        }
        Keys.onReturnPressed: dialog.acceptDefault()
        Keys.onEnterPressed: dialog.acceptDefault()
        implicitHeight: column.implicitHeight
        contentHeight: column.implicitHeight
        contentWidth: width
        clip: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds
        // What has the focus is to be seen, as on a page.
        readonly property Item focused: Window.activeFocusItem
        // With what is said of its value while it is typed.
        readonly property Item framed: frameOf(focused)
        function frameOf(item) {
            return item && item.parent instanceof LabeledField ? item.parent : null
        }
        function holds(inner) {
            for (let item = inner; item; item = item.parent) {
                if (item === column)
                    return true
            }
            return false
        }
        // A button that moved away between press and release would not be pressed at all. What is
        // typed into a field is to be seen.
        onFocusedChanged: if (holds(focused)
                && (focused.focusReason !== Qt.MouseFocusReason || focused.readOnly === false))
            show(frameOf(focused) || focused) // `framed` may be that of the focus before
        onContentHeightChanged: if (holds(framed)) show(framed)
        function show(item) {
            const top = Math.max(0, item.mapToItem(column, 0, 0).y - Theme.unit)
            const bottom = Math.min(contentHeight, top + item.height + Theme.unit * 2)
            if (top < contentY || bottom - top > height)
                contentY = Math.max(0, Math.min(top, contentHeight - height))
            else if (bottom > contentY + height)
                contentY = bottom - height
        }
        Accessible.role: Accessible.Dialog
        Accessible.name: dialog.title
        // In the margin: what is to be read keeps the whole width.
        ScrollBar.vertical: ScrollBar {
            parent: flick.parent
            x: flick.x + flick.width + (dialog.rightPadding - width) / 2
            y: flick.y
            height: flick.height
        }
        FillColumn {
            id: column
            width: flick.width
            spacing: Theme.unit * 1.5
        }
    }
}
