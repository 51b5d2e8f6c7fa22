// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// What the keys do.
BaseDialog {
    id: dialog
    objectName: "helpDialog"
    title: qsTrId("trivex-app-help")
    readonly property var keys: [
        [qsTrId("trivex-app-help-search"), "Ctrl+F"],
        [qsTrId("trivex-app-help-import"), "Ctrl+O"],
        [qsTrId("trivex-app-new-request"), "Ctrl+N"],
        [qsTrId("trivex-app-show-details"), "Enter"],
        [qsTrId("trivex-app-back"), "Esc"],
        [qsTrId("trivex-app-row-menu"), "Shift+F10"],
        [qsTrId("trivex-app-help-several"), "Shift+↑, Shift+↓"],
        [qsTrId("trivex-app-choose-all"), "Ctrl+A"],
        [qsTrId("trivex-app-copy-all"), "Ctrl+C"],
        [qsTrId("trivex-app-remove-confirm"), "Delete"],
        [qsTrId("trivex-app-help-undo"), "Ctrl+Z"],
        [qsTrId("trivex-app-manual"), "F1"],
        [qsTrId("trivex-app-help-quit"), "Ctrl+Q"]
    ]
    Repeater {
        model: dialog.keys
        RowLayout {
            spacing: Theme.unit * 2
            Layout.fillWidth: true
            Accessible.role: Accessible.StaticText
            Accessible.name: modelData[0] + ": " + modelData[1]
            Label {
                textFormat: Text.PlainText
                text: modelData[0]
                wrapMode: Text.WordWrap
                Layout.fillWidth: true
                Accessible.ignored: true
            }
            Label {
                textFormat: Text.PlainText
                text: modelData[1]
                color: Theme.textDim
                Layout.alignment: Qt.AlignTop
                Accessible.ignored: true
            }
        }
    }
    footer: DialogButtons {
        Button {
            objectName: "helpClose"
            text: qsTrId("trivex-app-close")
            highlighted: true
            focus: true
            onClicked: dialog.close()
        }
    }
}
