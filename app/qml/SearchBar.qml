// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// What is looked for in a list, the ready filters, and the order of what is found.
GridLayout {
    id: bar
    property SectionedModel rows
    property ReadyFilters filters
    property bool isRequests: false
    property alias offersTokens: filterButton.offersTokens
    property alias text: field.text
    /// The keys are to go to what was found.
    signal left()

    function focusField() {
        field.forceActiveFocus(Qt.ShortcutFocusReason)
        field.selectAll()
    }
    function add(letters) {
        field.forceActiveFocus(Qt.ShortcutFocusReason)
        field.insert(field.length, letters)
    }
    /// Beside the buttons there would be no room for a word.
    readonly property bool narrow: width < Theme.fontSize * 14
    columns: narrow ? 1 : 2
    columnSpacing: Theme.unit
    rowSpacing: Theme.unit
    SearchField {
        id: field
        objectName: "searchField"
        Layout.fillWidth: true
        Keys.onDownPressed: bar.left()
        onAccepted: bar.left()
    }
    RowLayout {
        spacing: Theme.unit
        FilterButton {
            id: filterButton
            filters: bar.filters
            // Requests have neither an end nor a token.
            visible: !bar.isRequests
        }
        SortButton {
            rows: bar.rows
            isRequests: bar.isRequests
        }
    }
}
