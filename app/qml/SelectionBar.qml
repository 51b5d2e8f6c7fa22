// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// How many rows are chosen, where there are several, and what can be done with them.
Flow {
    id: bar
    property RowActions actions
    objectName: "selectionBar"
    visible: actions.count > 1
    spacing: Theme.unit
    Label {
        textFormat: Text.PlainText
        objectName: "selectionCount"
        text: bar.visible ? qsTrId("trivex-app-chosen", bar.actions.count) : ""
        height: Theme.controlHeight
        verticalAlignment: Text.AlignVCenter
        font.bold: true
        Accessible.role: Accessible.AlertMessage
    }
    Button {
        objectName: "exportSeveral"
        text: qsTrId("trivex-app-export")
        icon.source: Theme.icon("export")
        onClicked: bar.actions.exportRows()
    }
    Button {
        objectName: "exportInOne"
        text: qsTrId("trivex-app-export-together")
        icon.source: Theme.icon("file")
        onClicked: bar.actions.exportTogether()
    }
    Button {
        objectName: "removeSeveral"
        text: qsTrId("trivex-app-remove")
        icon.source: Theme.icon("trash")
        flat: true
        visible: bar.actions.canRemove
        onClicked: bar.actions.remove()
    }
    ToolButton {
        objectName: "copySeveral"
        text: qsTrId("trivex-app-copy-all")
        icon.source: Theme.icon("copy")
        display: AbstractButton.IconOnly
        onClicked: bar.actions.copy()
    }
}
