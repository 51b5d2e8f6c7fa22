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
/// it: `activated` says which. If there is a `selection`, it alone decides which row is picked, so
/// that its other views agree with the list when rows come and go.
FocusScope {
    id: view
    property alias model: list.model
    property alias count: list.count
    property alias currentIndex: list.currentIndex
    property RowSelection selection
    readonly property int selectedRow: selection ? selection.row : list.currentIndex
    property alias listView: list
    property string pattern
    property bool sections: true
    signal picked(int index)
    signal activated(int index)

    onSelectedRowChanged: follow()
    /// A view moves its current row when rows come and go.
    function follow() {
        if (selection)
            list.currentIndex = selection.row
    }
    function pick(index) {
        const row = Math.max(0, Math.min(count - 1, index))
        if (count === 0 || row === selectedRow)
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
            place: model.section === undefined ? "" : model.section
            letter: model.initial
            validity: model.validity
            until: model.until
            hasKey: model.hasKey === true
            keyPresumed: model.keyPresumed === true
            pattern: view.pattern
            highlighted: index === view.selectedRow
            focusPolicy: Qt.NoFocus
            onClicked: {
                view.pick(index)
                list.forceActiveFocus(Qt.MouseFocusReason)
                view.open()
            }
        }
        ScrollBar.vertical: ScrollBar { id: bar }

        Keys.onReturnPressed: view.open()
        Keys.onEnterPressed: view.open()
        Keys.onSpacePressed: view.open()
        Keys.onPressed: {
            const page = Math.max(1, Math.floor(height / Theme.rowHeight) - 1)
            const now = view.selectedRow
            const to = ({ [Qt.Key_Up]: now - 1, [Qt.Key_Down]: now + 1,
                          [Qt.Key_Home]: 0, [Qt.Key_End]: count - 1,
                          [Qt.Key_PageDown]: now + page, [Qt.Key_PageUp]: now - page })[event.key]
            if (to === undefined || count === 0)
                return
            view.pick(to)
            event.accepted = true
        }
        onActiveFocusChanged: if (activeFocus && view.selectedRow < 0) view.pick(0)

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
