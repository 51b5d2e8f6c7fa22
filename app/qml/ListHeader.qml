// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import Trivex.Crypto.Controls 1.0

/// The title of a list with what can be made there.
PageHeader {
    id: header
    property Item page
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
    TokenMenu { host: header.page }
    Button {
        objectName: "importButton"
        text: qsTrId("trivex-app-import")
        icon.source: Theme.icon("import")
        highlighted: true
        visible: !header.page.isRequests
        onClicked: header.page.importAsked()
    }
    Button {
        objectName: "newRequestButton"
        text: qsTrId("trivex-app-new-request")
        icon.source: Theme.icon("plus")
        highlighted: true
        visible: header.page.isRequests
        onClicked: header.page.newRequestAsked()
    }
}
