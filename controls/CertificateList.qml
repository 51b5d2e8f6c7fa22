// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// A searchable list of certificates in sections, for any model with the roles of
/// `SectionedModel`. `model` is a `ListModel` in the gallery.
///
/// Arrow keys, Page Up and Down, Home and End move; Enter or a click chooses a row: `activated`
/// says which. `currentCertificate` keeps its row marked when rows come and go.
FocusScope {
    id: view
    property alias model: list.model
    property alias count: list.count
    property alias currentIndex: list.currentIndex
    property alias listView: list
    property string pattern
    property bool sections: true
    property Item emptyItem
    signal activated(int index)

    Accessible.role: Accessible.Grouping
    Accessible.name: list.Accessible.name

    function choose(index) {
        list.currentIndex = index
        view.activated(index)
    }

    ListView {
        id: list
        objectName: "certificateList"
        anchors.fill: parent
        focus: true
        activeFocusOnTab: true
        clip: true
        reuseItems: true
        // Rows made ahead are made asynchronously, which a reset of the model then cancels loudly.
        cacheBuffer: 0
        boundsBehavior: Flickable.StopAtBounds
        currentIndex: -1
        keyNavigationEnabled: true
        highlightMoveDuration: 0
        highlightResizeDuration: 0
        pixelAligned: true
        Accessible.role: Accessible.List
        Accessible.name: qsTrId("trivex-app-certificates")

        section.property: view.sections ? "section" : ""
        section.delegate: Label {
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
            highlighted: ListView.isCurrentItem
            focusPolicy: Qt.NoFocus
            onClicked: {
                list.forceActiveFocus(Qt.MouseFocusReason)
                view.choose(index)
            }
        }
        ScrollBar.vertical: ScrollBar { id: bar }

        Keys.onReturnPressed: if (currentIndex >= 0) view.activated(currentIndex)
        Keys.onEnterPressed: if (currentIndex >= 0) view.activated(currentIndex)
        Keys.onSpacePressed: if (currentIndex >= 0) view.activated(currentIndex)
        Keys.onPressed: {
            const page = Math.max(1, Math.floor(height / Theme.rowHeight) - 1)
            const to = ({ [Qt.Key_Home]: 0, [Qt.Key_End]: count - 1,
                          [Qt.Key_PageDown]: Math.min(count - 1, currentIndex + page),
                          [Qt.Key_PageUp]: Math.max(0, currentIndex - page) })[event.key]
            if (to === undefined || count === 0)
                return
            currentIndex = to
            event.accepted = true
        }
        onActiveFocusChanged: if (activeFocus && currentIndex < 0 && count > 0) currentIndex = 0

        Rectangle {
            anchors.fill: parent
            color: "transparent"
            radius: Theme.radius
            border.width: Theme.focusWidth
            border.color: Theme.link
            visible: list.activeFocus && list.currentIndex < 0
        }
    }
}
