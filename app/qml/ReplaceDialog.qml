// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Asks before a file is replaced.
BaseDialog {
    id: dialog
    property string path
    signal confirmed()
    signal otherAsked()

    initialFocus: harmless
    objectName: "replaceDialog"
    title: qsTrId("trivex-app-replace-title")

    function ask(path_) {
        path = path_
        open()
    }
    Label {
        textFormat: Text.PlainText
        objectName: "replaceName"
        text: Files.fileName(dialog.path)
        font.bold: true
        wrapMode: Text.WrapAtWordBoundaryOrAnywhere
        Layout.fillWidth: true
    }
    Label {
        textFormat: Text.PlainText
        text: qsTrId("trivex-app-replace-text").arg(Files.folder(dialog.path))
        wrapMode: Text.WrapAtWordBoundaryOrAnywhere
        Layout.fillWidth: true
    }
    footer: DialogButtons {
        Button {
            id: harmless
            objectName: "replaceCancel"
            text: qsTrId("trivex-app-cancel")
            focus: true
            onClicked: dialog.close()
        }
        Button {
            objectName: "replaceOther"
            text: qsTrId("trivex-app-replace-other")
            onClicked: {
                dialog.close()
                dialog.otherAsked()
            }
        }
        Button {
            objectName: "replaceConfirm"
            text: qsTrId("trivex-app-replace-confirm")
            onClicked: {
                dialog.close()
                dialog.confirmed()
            }
        }
    }
}
