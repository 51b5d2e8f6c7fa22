// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// Asks before changes are thrown away that are not saved.
BaseDialog {
    id: dialog
    signal confirmed()

    initialFocus: harmless
    objectName: "leaveEditing"
    title: qsTrId("trivex-app-leave-editing-title")

    Label {
        textFormat: Text.PlainText
        text: qsTrId("trivex-app-leave-editing-text")
        wrapMode: Text.WordWrap
        Layout.fillWidth: true
    }
    footer: DialogButtons {
        Button {
            id: harmless
            objectName: "leaveEditingStay"
            text: qsTrId("trivex-app-leave-editing-stay")
            focus: true
            onClicked: dialog.close()
        }
        Button {
            objectName: "leaveEditingConfirm"
            text: qsTrId("trivex-app-leave-editing-confirm")
            onClicked: {
                dialog.close()
                dialog.confirmed()
            }
        }
    }
}
