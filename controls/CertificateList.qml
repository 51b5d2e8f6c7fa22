// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// A searchable list of certificates in sections, for any model with the roles of
/// `SectionedModel`. `model` is a `ListModel` in the gallery.
///
/// Arrow keys, Page Up and Down, Home and End and a click pick a row; Enter, Space and a click open
/// it: `activated` says which. If there is a `selection`, it alone decides which rows are picked, so
/// that its other views agree with the list when rows come and go; Shift, Ctrl and Ctrl+A pick
/// several then. What acts on the picked rows is asked for: by Delete, Ctrl+C, and by the right
/// button, the menu key and Shift+F10 for a menu.
FocusScope {
    id: view
    property alias model: list.model ///< the rows
    property alias count: list.count ///< how many rows there are
    property alias currentIndex: list.currentIndex ///< the row where the keyboard is; -1 for none
    /// Decides which rows are picked, for other views too; null for a list by itself.
    property RowSelection selection
    /// The row that details are shown of; -1 for none.
    readonly property int selectedRow: selection ? selection.row : list.currentIndex
    property alias listView: list ///< the view inside, for its position and its delegates
    /// A function that gives the URLs of the picked rows as files, where they can be dragged out.
    property alias dragUrls: rowDrag.urls
    property string pattern ///< the text that was searched for: it is marked in the rows
    property bool sections: true ///< groups the rows by their "section" role
    signal picked(int index) ///< that row was picked, by keyboard or mouse
    signal activated(int index) ///< that row was opened: its details are wanted
    /// A row was opened by keyboard, or by a double click.
    signal entered()
    signal removeAsked() ///< Delete was pressed: the picked rows are to be removed
    signal copyAsked() ///< Ctrl+C was pressed: the picked rows are wanted on the clipboard
    signal menuAsked(real x, real y) ///< at a point of this item
    signal typed(string text) ///< letters that mean no command

    onSelectedRowChanged: follow()
    /// A view moves its current row when rows come and go.
    function follow() {
        if (selection)
            list.currentIndex = selection.row
    }
    /// Picks that row alone and brings it into sight.
    function pick(index) {
        const row = Math.max(0, Math.min(count - 1, index))
        if (count === 0 || row === selectedRow && !(selection && selection.count > 1))
            return
        if (selection)
            selection.row = row
        else
            list.currentIndex = row
        view.picked(row)
    }
    /// Opens the current row: `activated` follows.
    function open() {
        if (selectedRow >= 0)
            view.activated(selectedRow)
    }
    /// Opens the current row as Enter does: `activated` and `entered` follow.
    function enter() {
        if (selectedRow < 0)
            return
        open()
        entered()
    }
    /// Whether that row is picked.
    function isChosen(index) {
        return index === selectedRow || selection !== null && selection.count > 1
            && selection.isChosen(index)
    }
    /// Gives the list the keys without picking a row.
    function focusQuietly() {
        quiet = true
        list.forceActiveFocus(Qt.OtherFocusReason)
        quiet = false
    }
    // internal
    property bool quiet: false
    /// Where the last click was, in the window.
    property point lastClick

    // internal
    function take(index, button, modifiers) {
        list.forceActiveFocus(Qt.MouseFocusReason)
        if (button === Qt.RightButton) {
            if (!isChosen(index))
                pick(index)
        } else if (selection && modifiers & Qt.ControlModifier) {
            selection.toggle(index)
        } else if (selection && modifiers & Qt.ShiftModifier) {
            selection.extendTo(index)
        } else {
            pick(index)
            open()
        }
    }
    /// The keys that move, with the row where each leads to from the row `now`.
    function targets(now) {
        const page = Math.max(1, Math.floor(list.height / Theme.rowHeight) - 1)
        return ({ [Qt.Key_Up]: now - 1, [Qt.Key_Down]: now + 1,
                  [Qt.Key_Home]: 0, [Qt.Key_End]: count - 1,
                  [Qt.Key_PageDown]: now + page, [Qt.Key_PageUp]: now - page })
    }
    // internal
    function move(to, extending) {
        if (extending && selection)
            selection.extendTo(Math.max(0, Math.min(count - 1, to)))
        else
            pick(to)
    }
    // internal
    function askMenu() {
        const row = list.itemAtIndex(selectedRow)
        if (row)
            menuAsked(Theme.unit * 4, Math.max(0, Math.min(height,
                row.mapToItem(view, 0, row.height).y)))
    }
    /// Whether the key means something; it is done then.
    function command(event) {
        const plain = !(event.modifiers & ~(Qt.ShiftModifier | Qt.KeypadModifier))
        if (event.key === Qt.Key_Delete && event.modifiers === Qt.NoModifier)
            removeAsked()
        else if (event.matches(StandardKey.Copy))
            copyAsked()
        else if (event.matches(StandardKey.SelectAll) && selection)
            selection.chooseAll()
        else if (event.key === Qt.Key_Menu
                 || event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier)
            askMenu()
        else if (event.key === Qt.Key_Escape && selection && selection.count > 1)
            selection.chooseCurrent()
        else if (plain && event.text.length === 1 && event.text > " " && event.text !== "\x7f")
            typed(event.text)
        else
            return false
        return true
    }
    // internal
    function drag(index) {
        if (!isChosen(index))
            pick(index)
        rowDrag.begin()
    }
    RowDrag {
        id: rowDrag
    }
    Accessible.role: Accessible.Grouping
    Accessible.name: list.Accessible.name

    ListView {
        id: list
        objectName: "certificateList"
        anchors.fill: parent
        focus: true
        activeFocusOnTab: true
        clip: true
        reuseItems: true
        // Rows made ahead are incubated asynchronously, and a reset of the model would cancel that
        // with warnings.
        cacheBuffer: 0
        boundsBehavior: Flickable.StopAtBounds
        currentIndex: -1
        keyNavigationEnabled: false
        onCurrentIndexChanged: if (currentIndex !== view.selectedRow) Qt.callLater(view.follow)
        highlightMoveDuration: 0
        highlightResizeDuration: 0
        pixelAligned: true
        Accessible.role: Accessible.List
        Accessible.name: qsTrId("trivex-app-certificates")

        section.property: view.sections ? "section" : ""
        section.delegate: Label {
            textFormat: Text.PlainText
            width: list.width
            topPadding: Theme.unit * 1.5
            bottomPadding: Theme.unit * 0.75
            leftPadding: Theme.unit * 1.5
            text: section
            elide: Text.ElideRight
            font.pixelSize: Theme.smallSize
            font.bold: true
            color: Theme.textDim
            Accessible.role: Accessible.Heading
        }
        delegate: CertificateRow {
            width: list.width - (bar.visible ? bar.width : 0)
            name: model.name
            issuer: model.issuer
            place: model.storeName !== undefined ? model.storeName
                : model.section === undefined ? "" : model.section
            isKey: model.isKey === true
            letter: model.initial
            validity: model.validity
            until: model.until
            hasKey: model.hasKey === true
            keyPresumed: model.keyPresumed === true
            pattern: view.pattern
            highlighted: view.isChosen(index)
            focusPolicy: Qt.NoFocus
            // By who does not use a mouse: a program that reads the screen.
            onClicked: view.take(index, Qt.LeftButton, Qt.NoModifier)
            MouseArea {
                anchors.fill: parent
                acceptedButtons: Qt.LeftButton | Qt.RightButton
                onPressed: rowDrag.press(mouse)
                onPositionChanged: if (rowDrag.isDrag(mouse)) view.drag(index)
                onClicked: {
                    view.lastClick = mapToItem(null, mouse.x, mouse.y)
                    view.take(index, mouse.button, mouse.modifiers)
                    if (mouse.button === Qt.RightButton) {
                        const at = mapToItem(view, mouse.x, mouse.y)
                        view.menuAsked(at.x, at.y)
                    }
                }
                onDoubleClicked: if (mouse.button === Qt.LeftButton) view.enter()
            }
        }
        ScrollBar.vertical: ScrollBar { id: bar }

        Keys.onReturnPressed: view.enter()
        Keys.onEnterPressed: view.enter()
        Keys.onSpacePressed: view.open()
        Keys.onPressed: {
            const to = view.targets(view.selectedRow)[event.key]
            if (to === undefined) {
                event.accepted = view.command(event)
            } else if (count > 0) {
                view.move(to, event.modifiers & Qt.ShiftModifier)
                event.accepted = true
            }
        }
        onActiveFocusChanged: {
            const awaited = view.selection !== null && view.selection.awaited
            if (activeFocus && view.selectedRow < 0 && !view.quiet && !awaited)
                view.pick(0)
        }

        Rectangle {
            anchors.fill: parent
            color: "transparent"
            radius: Theme.radius
            border.width: Theme.focusWidth
            border.color: Theme.link
            visible: list.activeFocus && view.selectedRow < 0
        }
    }
}
