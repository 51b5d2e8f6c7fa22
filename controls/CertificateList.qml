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
    property alias model: list.model
    property alias count: list.count
    property alias currentIndex: list.currentIndex
    property RowSelection selection
    readonly property int selectedRow: selection ? selection.row : list.currentIndex
    property alias listView: list
    /// A function that gives the URLs of the picked rows as files, where they can be dragged out.
    property alias dragUrls: rowDrag.urls
    property string pattern
    property bool sections: true
    signal picked(int index)
    signal activated(int index)
    /// A row was opened by keyboard, or by a double click.
    signal entered()
    signal removeAsked()
    signal copyAsked()
    /// At a point of this item.
    signal menuAsked(real x, real y)
    /// Letters were typed that mean no command.
    signal typed(string text)

    onSelectedRowChanged: follow()
    /// A view moves its current row when rows come and go.
    function follow() {
        if (selection)
            list.currentIndex = selection.row
    }
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
    function open() {
        if (selectedRow >= 0)
            view.activated(selectedRow)
    }
    function enter() {
        if (selectedRow < 0)
            return
        open()
        entered()
    }
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
    property bool quiet: false
    /// Where the last click was, in the window.
    property point lastClick

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
    function move(to, extending) {
        if (extending && selection)
            selection.extendTo(Math.max(0, Math.min(count - 1, to)))
        else
            pick(to)
    }
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
