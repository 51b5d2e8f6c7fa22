// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// One line of the side bar: an icon, a text, a count or a busy mark.
ItemDelegate {
    id: item
    property int count: -1
    property bool busy: false
    property string note
    // A delegate takes no focus by itself.
    focusPolicy: Qt.StrongFocus
    implicitHeight: Theme.fontSize * (note ? 3.6 : 2.9)
    verticalPadding: 0
    Accessible.role: Accessible.PageTab
    Accessible.name: [text, count >= 0 ? qsTrId("trivex-app-items", count) : "", note]
        .filter(function(part) { return part }).join(", ")
    Accessible.selected: highlighted
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Keys.onUpPressed: focusNeighbour(false)
    Keys.onDownPressed: focusNeighbour(true)

    function focusNeighbour(forward) {
        const neighbour = nextItemInFocusChain(forward)
        if (neighbour && neighbour.parent === parent)
            neighbour.forceActiveFocus(forward ? Qt.TabFocusReason : Qt.BacktabFocusReason)
    }
    contentItem: RowLayout {
        spacing: Theme.unit * 1.5
        Icon {
            source: item.icon.source
            color: item.highlighted ? Theme.link : Theme.textDim
        }
        ColumnLayout {
            spacing: 0
            Layout.fillWidth: true
            Text {
                textFormat: Text.PlainText
                text: item.text
                font.pixelSize: Theme.fontSize
                color: item.highlighted ? Theme.link : Theme.text
                elide: Text.ElideRight
                Layout.fillWidth: true
                Accessible.ignored: true
            }
            Text {
                textFormat: Text.PlainText
                text: item.note
                visible: text.length > 0
                font.pixelSize: Theme.smallSize
                color: Theme.textDim
                elide: Text.ElideRight
                Layout.fillWidth: true
                Accessible.ignored: true
            }
        }
        BusyIndicator {
            running: item.busy
            visible: item.busy
            Accessible.name: item.note
        }
        Text {
            textFormat: Text.PlainText
            text: item.count > 0 ? Number(item.count).toLocaleString(Qt.locale(), "f", 0) : ""
            visible: text.length > 0 && !item.busy
            font.pixelSize: Theme.smallSize
            color: Theme.textDim
            Accessible.ignored: true
        }
    }
}
