// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Chooses what the rows are sorted by; the same again turns the order round.
ToolButton {
    id: button
    property SectionedModel rows
    /// Requests have neither an issuer nor an end.
    property bool isRequests: false
    objectName: "sortButton"
    text: qsTrId("trivex-app-sort")
    icon.source: Theme.icon("sort")
    display: AbstractButton.IconOnly
    onClicked: menu.popup(button, 0, button.height)

    Menu {
        id: menu
        objectName: "sortMenu"
        title: button.text
        SortItem {
            objectName: "sortByName"
            text: qsTrId("trivex-app-sort-name")
            rows: button.rows
            key: SectionedModel.SortByName
        }
        SortItem {
            objectName: "sortByIssuer"
            text: qsTrId("trivex-app-sort-issuer")
            rows: button.rows
            key: SectionedModel.SortByIssuer
            shown: !button.isRequests
        }
        SortItem {
            objectName: "sortByEnd"
            text: qsTrId("trivex-app-sort-end")
            rows: button.rows
            key: SectionedModel.SortByEnd
            shown: !button.isRequests
        }
        SortItem {
            objectName: "sortByPlace"
            text: qsTrId("trivex-app-sort-place")
            rows: button.rows
            key: SectionedModel.SortByPlace
            // Of one token there is nothing to sort.
            shown: !button.isRequests && !button.rows.storeId
        }
    }
}
