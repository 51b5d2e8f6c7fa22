// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// One line of the side bar: an icon, a text, a count or a busy mark.
ItemDelegate {
    id: line
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
            source: line.icon.source
            color: line.highlighted ? Theme.link : Theme.textDim
        }
        ColumnLayout {
            spacing: 0
            Layout.fillWidth: true
            Text {
                textFormat: Text.PlainText
                text: line.text
                font.pixelSize: Theme.fontSize
                color: line.highlighted ? Theme.link : Theme.text
                elide: Text.ElideRight
                Layout.fillWidth: true
                Accessible.ignored: true
            }
            // What most lines do not have would be made before the first frame, with fonts of its own.
            Loader {
                active: line.note
                visible: active
                Layout.fillWidth: true
                sourceComponent: Text {
                    textFormat: Text.PlainText
                    text: line.note
                    font.pixelSize: Theme.smallSize
                    color: Theme.textDim
                    elide: Text.ElideRight
                    Accessible.ignored: true
                }
            }
        }
        Loader {
            active: line.busy
            visible: active
            sourceComponent: BusyIndicator {
                // The line goes before its mark does.
                Accessible.name: line ? line.note : ""
            }
        }
        Loader {
            active: line.count > 0
            visible: active && !line.busy
            sourceComponent: Text {
                textFormat: Text.PlainText
                text: Number(line.count).toLocaleString(Qt.locale(), "f", 0)
                font.pixelSize: Theme.smallSize
                color: Theme.textDim
                Accessible.ignored: true
            }
        }
    }
}
