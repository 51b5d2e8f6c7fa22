// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// The categories with their counts, the tokens by name, and what one can make.
Rectangle {
    id: sidebar
    /// A `Library`, null where it is not there yet.
    property QtObject library: null
    readonly property Categories categories: Categories {}
    property string current
    signal chosen(string key)
    signal settingsAsked()
    signal helpAsked()

    color: Theme.panel
    implicitWidth: Math.round(Theme.fontSize * 17.5)
    Accessible.role: Accessible.Pane
    Accessible.name: qsTrId("trivex-app-categories")

    Rectangle {
        anchors.right: parent.right
        width: 1
        height: parent.height
        color: Theme.border
    }

    Flickable {
        anchors.fill: parent
        anchors.rightMargin: 1
        contentHeight: column.implicitHeight + Theme.unit * 2
        contentWidth: width
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        Accessible.ignored: true
        ScrollBar.vertical: ScrollBar {}

        ColumnLayout {
            id: column
            x: Theme.unit * 1.25
            width: parent.width - Theme.unit * 2.5
            spacing: 2

            RowLayout {
                Layout.leftMargin: Theme.unit * 1.5
                Layout.topMargin: Theme.unit
                Layout.bottomMargin: Theme.unit
                Layout.fillWidth: true
                Label {
                    textFormat: Text.PlainText
                    text: Qt.application.displayName
                    font.pixelSize: Theme.headingSize
                    font.bold: true
                    Layout.fillWidth: true
                    Accessible.role: Accessible.Heading
                }
                ToolButton {
                    objectName: "helpButton"
                    icon.source: Theme.icon("info")
                    display: AbstractButton.IconOnly
                    text: qsTrId("trivex-app-manual")
                    onClicked: sidebar.helpAsked()
                }
                ToolButton {
                    objectName: "settingsButton"
                    icon.source: Theme.icon("settings")
                    display: AbstractButton.IconOnly
                    text: qsTrId("trivex-app-settings")
                    onClicked: sidebar.settingsAsked()
                }
            }
            Repeater {
                model: sidebar.categories.all
                SidebarItem {
                    objectName: "category-" + modelData.key
                    text: modelData.title
                    icon.source: Theme.icon(modelData.icon)
                    count: counter.count
                    // The system's own come and go with its updates.
                    note: modelData.key !== "system" && counter.expiring > 0
                        ? qsTrId("trivex-app-ends-soon", counter.expiring) : ""
                    highlighted: sidebar.current === modelData.key
                    onClicked: sidebar.chosen(modelData.key)
                    Layout.fillWidth: true
                    LateCount {
                        id: counter
                        source: "CategoryCount.qml"
                        model: sidebar.library ? sidebar.library.filters[modelData.key] : null
                    }
                }
            }
            SidebarItem {
                objectName: "category-requests"
                text: qsTrId("trivex-app-category-requests")
                icon.source: Theme.icon("request")
                count: requestCount.count
                highlighted: sidebar.current === "requests"
                onClicked: sidebar.chosen("requests")
                Layout.fillWidth: true
                LateCount {
                    id: requestCount
                    source: "RowCount.qml"
                    model: sidebar.library ? sidebar.library.requests : null
                }
            }
            SidebarHeading {
                text: qsTrId("trivex-app-tokens")
                visible: tokenRows.count > 0
            }
            Repeater {
                id: tokenRows
                model: sidebar.library ? sidebar.library.tokens : null
                SidebarItem {
                    objectName: "token-" + model.name
                    text: model.name
                    icon.source: Theme.icon("token")
                    count: model.count
                    busy: model.busy
                    note: model.busy ? model.busyText
                        : !model.present ? qsTrId("trivex-app-token-removed") : ""
                    highlighted: sidebar.current === "token:" + model.storeId
                    onClicked: sidebar.chosen("token:" + model.storeId)
                    Layout.fillWidth: true
                }
            }
            SidebarHeading {
                text: qsTrId("trivex-app-work")
            }
            SidebarItem {
                objectName: "category-newRequest"
                text: qsTrId("trivex-app-new-request")
                icon.source: Theme.icon("key")
                highlighted: sidebar.current === "newRequest"
                onClicked: sidebar.chosen("newRequest")
                Layout.fillWidth: true
            }
            SidebarItem {
                objectName: "category-sign"
                text: qsTrId("trivex-app-sign-verify")
                icon.source: Theme.icon("sign")
                highlighted: sidebar.current === "sign"
                onClicked: sidebar.chosen("sign")
                Layout.fillWidth: true
            }
        }
    }
}
