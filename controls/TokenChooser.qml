// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Chooses a token among the locations that the key store model offers, and shows its state; with
/// `filesName`, the user's own files too, after the tokens.
///
/// The locations include key stores of other programs. Those that are no tokens are left out, and
/// the first token that is present is chosen.
FillColumn {
    id: chooser
    /// The `certLocation` of the key store model, or the `prKeyLocation` of a request.
    property QtObject locations
    /// What the user's own files are called; not offered when empty.
    property string filesName
    /// The user's own files are chosen, and no token.
    readonly property bool filesChosen: box.currentIndex >= 0
        && box.currentIndex < choices.length && choices[box.currentIndex].row < 0
    /// The chosen row of `locations`, -1 for none.
    readonly property int location: box.currentIndex >= 0 && box.currentIndex < choices.length
        ? choices[box.currentIndex].row : -1
    /// The `TokenInfo` of the chosen token.
    property alias info: info
    /// What is offered: maps with "name", "storeId" and "row".
    property var choices: []
    /// The label of the chosen token; empty for none.
    readonly property string tokenName: location >= 0 ? choices[box.currentIndex].name : ""
    /// The id of the chosen token's store; empty for none.
    readonly property string storeId: location >= 0 ? choices[box.currentIndex].storeId : ""
    /// What stands above the box.
    property string label: qsTrId("trivex-app-token")
    /// What is chosen is there and can be written to.
    readonly property bool usable: filesChosen || location >= 0 && info.present && !info.readOnly
    /// The choice that a person made; it stays while it is offered.
    property string wanted
    spacing: 3
    Layout.preferredWidth: 100

    /// Forgets the choice for one that takes keys, which is a token where there is any.
    function startOver() {
        wanted = ""
        box.currentIndex = -1
        refresh()
    }

    /// Reads the locations again, because sorting moves rows and their model announces no change.
    function refresh() {
        const kept = wanted || tokenName
        const found = []
        for (let i = 0; locations && i < locations.rowCount(); ++i) {
            const name = Rows.value(locations, i, "type")
            if (tokens.has(name))
                found.push({ row: i, name: name, storeId: tokens.storeIdOf(name) })
        }
        if (filesName)
            found.push({ row: -1, name: filesName, storeId: "" })
        choices = found
        const again = found.findIndex(function(one) { return one.name === kept })
        const there = found.findIndex(function(one) {
            return one.row < 0 || tokens.isPresent(one.name)
        })
        box.currentIndex = again >= 0 ? again : there >= 0 ? there : found.length ? 0 : -1
    }
    onLocationsChanged: refresh()
    Component.onCompleted: refresh()

    TokenListModel {
        id: tokens
        onCountChanged: chooser.refresh()
    }
    Connections {
        target: chooser.locations
        function onRowsInserted() { chooser.refresh() }
    }
    TokenInfo {
        id: info
        storeName: chooser.tokenName
    }
    Label {
        textFormat: Text.PlainText
        text: chooser.label
        color: Theme.textDim
        font.pixelSize: Theme.smallSize
    }
    ComboBox {
        id: box
        objectName: "tokenChooser"
        model: chooser.choices
        textRole: "name"
        delegate: PlainDelegate {
            width: ListView.view ? ListView.view.width : implicitWidth
            text: modelData.name
            highlighted: box.highlightedIndex === index
            hoverEnabled: box.hoverEnabled
        }
        enabled: count > 0
        Layout.fillWidth: true
        Accessible.name: chooser.label + ": " + currentText
        onActivated: chooser.wanted = chooser.choices[index].name
    }
    Label {
        textFormat: Text.PlainText
        text: box.count === 0 ? qsTrId("trivex-app-no-token")
            : chooser.filesChosen ? ""
            : !info.present ? qsTrId("trivex-app-token-absent")
            : info.readOnly ? qsTrId("trivex-app-token-read-only")
            : info.busy ? info.busyText : info.pinText
        visible: text.length > 0
        color: Theme.warn
        font.pixelSize: Theme.smallSize
        wrapMode: Text.WordWrap
        Layout.fillWidth: true
    }
}
