// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// Where a new request went and what to do with it.
Card {
    id: card
    property string path
    signal startOverAsked()
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
            objectName: "startOver"
            text: qsTrId("trivex-app-another-request")
            onClicked: card.startOverAsked()
        }
    }
}
