// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// Asks before the window closes over what is under way or not saved.
BaseDialog {
    id: dialog
    /// What that is, a sentence each.
    property var lines: []
    signal confirmed()
    objectName: "quitDialog"
    initialFocus: keepButton
    title: qsTrId("trivex-app-quit-title")

    function ask(lines_) {
        lines = lines_
        open()
    }

    Repeater {
        model: dialog.lines
        Notice {
            objectName: "quitLine"
            level: 2
            text: modelData
            Layout.fillWidth: true
        }
    }
    Label {
        textFormat: Text.PlainText
        text: qsTrId("trivex-app-quit-text")
        wrapMode: Text.WordWrap
        Layout.fillWidth: true
    }
    footer: DialogButtons {
        Button {
            id: keepButton
            objectName: "quitCancel"
            text: qsTrId("trivex-app-quit-cancel")
            highlighted: true
            focus: true
            onClicked: dialog.close()
        }
        Button {
            objectName: "quitConfirm"
            text: qsTrId("trivex-app-quit-confirm")
            onClicked: {
                dialog.close()
                dialog.confirmed()
            }
        }
    }
}
