// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import Trivex.Crypto.Controls 1.0

/// The title of a list with what can be made there.
PageHeader {
    id: header
    property Item page
    /// Before the title gives way to the texts of buttons, their pictures have to do.
    readonly property bool roomy: room > Theme.fontSize * 40
    readonly property bool tight: room < Theme.fontSize * (page.storeId ? 30 : 19)
    // From without: a layout misses sizes that change while it works out its own.
    readonly property real room: page.columns > 1
        ? Math.min(page.width, Theme.fontSize * 144) * 0.46 : page.width
    signal factsAsked()

    title: page.title
    menuVisible: page.columns < 3
    onMenuAsked: page.menuAsked()
    ToolButton {
        objectName: "tokenFactsButton"
        text: qsTrId("trivex-app-about-this-token")
        icon.source: Theme.icon("info")
        display: AbstractButton.IconOnly
        visible: header.page.storeId.length > 0
        onClicked: header.factsAsked()
    }
    TokenMenu {
        host: header.page
        wide: header.roomy
    }
    Button {
        objectName: "importButton"
        text: qsTrId("trivex-app-import")
        icon.source: Theme.icon("import")
        highlighted: true
        display: header.tight ? AbstractButton.IconOnly : AbstractButton.TextBesideIcon
        visible: !header.page.isRequests
        ToolTip.text: text
        ToolTip.visible: header.tight && hovered
        onClicked: header.page.importAsked()
    }
    Button {
        objectName: "newRequestButton"
        text: qsTrId("trivex-app-new-request")
        icon.source: Theme.icon("plus")
        highlighted: true
        display: header.tight ? AbstractButton.IconOnly : AbstractButton.TextBesideIcon
        visible: header.page.isRequests
        ToolTip.text: text
        ToolTip.visible: header.tight && hovered
        onClicked: header.page.newRequestAsked()
    }
}
