// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// The facts of one token.
BaseDialog {
    id: dialog
    signal copied()

    function show(storeId) {
        view.storeId = storeId
        open()
    }
    objectName: "tokenFactsDialog"
    title: qsTrId("trivex-app-about-this-token")
    preferredWidth: Theme.fontSize * 40
    // Nobody looks at it: the token is left alone.
    onClosed: view.storeId = ""

    TokenFacts {
        id: view
        objectName: "tokenFacts"
        Layout.fillWidth: true
    }
    footer: DialogButtons {
        Button {
            objectName: "tokenFactsCopy"
            text: qsTrId("trivex-app-copy-all")
            icon.source: Theme.icon("copy")
            flat: true
            onClicked: {
                Desktop.copy(view.facts.text())
                dialog.copied()
            }
        }
        Button {
            objectName: "tokenFactsClose"
            text: qsTrId("trivex-app-close")
            highlighted: true
            focus: true
            onClicked: dialog.close()
        }
    }
}
