// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Where a new request went and what to do with it.
Card {
    id: card
    property string path
    property string pem
    signal startOverAsked()
    signal told(string text)
    signal failed(string cause, string advice)
    function focusFirst() {
        folderButton.forceActiveFocus(Qt.OtherFocusReason)
    }

    objectName: "savedCard"
    title: qsTrId("trivex-app-step-done")
    visible: path.length > 0
    DetailRow {
        label: qsTrId("trivex-app-file")
        value: card.path
        Layout.fillWidth: true
    }
    Label {
        textFormat: Text.PlainText
        text: qsTrId("trivex-app-request-next")
        wrapMode: Text.WordWrap
        Layout.fillWidth: true
    }
    Flow {
        spacing: Theme.unit
        Layout.fillWidth: true
        Button {
            id: folderButton
            objectName: "openFolder"
            text: qsTrId("trivex-app-open-folder")
            icon.source: Theme.icon("folder")
            onClicked: Desktop.openFolder(card.path)
        }
        Button {
            objectName: "copyRequest"
            text: qsTrId("trivex-app-copy-pem")
            icon.source: Theme.icon("copy")
            onClicked: {
                Desktop.copy(card.pem)
                card.told(qsTrId("trivex-app-copied"))
            }
        }
        Button {
            objectName: "saveRequest"
            text: qsTrId("trivex-app-save-as")
            icon.source: Theme.icon("export")
            onClicked: {
                const name = Files.fileName(card.path)
                if (task.saver.stageCopy(card.path))
                    task.choose(name)
                else
                    card.failed(qsTrId("trivex-app-request-unread"), Files.whyNotRead(card.path))
            }
        }
        Button {
            objectName: "startOver"
            text: qsTrId("trivex-app-another-request")
            onClicked: card.startOverAsked()
        }
    }
    SaveTask {
        id: task
        title: qsTrId("trivex-app-export-title")
        formats: [[qsTrId("trivex-app-format-pem"), ["csr", "pem"], FileSaver.AsIs],
                  [qsTrId("trivex-app-format-der"), ["der", "p10"], FileSaver.Der]]
        onSaved: card.told(qsTrId("trivex-app-exported").arg(path))
        onFailed: card.failed(qsTrId("trivex-app-request-not-made"), reason)
    }
}
