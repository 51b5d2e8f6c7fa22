// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Window 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// The details of one certificate: a header with its actions and a card for each group.
/// `groups` is what `CertificateDetails` gives; made of plain maps in the gallery.
Flickable {
    id: view
    property var groups: []
    property alias header: header
    contentWidth: width
    contentHeight: column.implicitHeight + Theme.unit * 3
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    Accessible.role: Accessible.Pane
    Accessible.name: qsTrId("trivex-app-details")
    ScrollBar.vertical: ScrollBar { id: bar }

    function showItem(item) {
        const y = item.mapToItem(column, 0, 0).y
        if (y < contentY)
            contentY = y
        else if (y + item.height > contentY + height)
            contentY = Math.max(0, y + item.height - height)
    }
    readonly property Item focused: Window.activeFocusItem
    onFocusedChanged: {
        for (let item = focused; item; item = item.parent) {
            if (item === column)
                return showItem(focused)
        }
    }

    FillColumn {
        id: column
        width: view.width - (bar.visible ? bar.width : 0)
        spacing: Theme.unit * 1.5
        CertificateHeader {
            id: header
            Layout.fillWidth: true
        }
        Repeater {
            model: view.groups
            Card {
                title: modelData.title ? modelData.title : qsTrId("trivex-app-general")
                Layout.fillWidth: true
                Repeater {
                    model: modelData.rows
                    DetailRow {
                        label: modelData.label
                        value: modelData.value
                        fixedWidth: modelData.fixed === true
                        flag: modelData.flag ? modelData.flag : ""
                        Layout.fillWidth: true
                    }
                }
            }
        }
    }
}
