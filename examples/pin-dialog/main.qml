// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Tools 1.0

// Removes a certificate with its key from a token, which asks for the PIN: a dialog of one's own
// answers. PinPrompt takes the questions of all operations that ask nobody else; one is enough.
ApplicationWindow {
    id: window
    objectName: "window"
    property string outcome
    visible: true
    width: 480
    height: 640
    title: "Remove a certificate"
    onOutcomeChanged: console.log(outcome)

    ListView {
        id: list
        objectName: "list"
        anchors.fill: parent
        model: CertificateModel {
            sourceModel: KeyStoreModel
            filterRole: KeyStoreModel.SmartCard
        }
        delegate: RowLayout {
            width: list.width
            readonly property string certificateName: model.name
            function remove() { KeyStoreModel.removeCertificate(model.entryId) }
            Label { text: model.name; textFormat: Text.PlainText; Layout.fillWidth: true }
            Button { text: "Remove"; onClicked: parent.remove() }
        }
        onCountChanged: console.log(count, "certificates")
    }

    PinPrompt {
        id: prompt
        enabled: true // until a dialog says so, every question is declined
        onQuestionChanged: open ? dialog.open() : dialog.close()
    }
    Dialog {
        id: dialog
        objectName: "pinDialog"
        anchors.centerIn: parent
        modal: true
        title: "PIN"
        standardButtons: Dialog.Ok | Dialog.Cancel
        onAboutToShow: pin.clear()
        onOpened: pin.forceActiveFocus()
        // What was typed answers the question that was shown, and no later one.
        onAccepted: prompt.submit(prompt.question, pin.text)
        onRejected: prompt.reject(prompt.question)
        ColumnLayout {
            // No title: some styles take a name there for rich text.
            Label { objectName: "pinToken"; text: "The PIN of " + prompt.tokenName; textFormat: Text.PlainText }
            Label { text: prompt.purposeText; textFormat: Text.PlainText }
            Label { text: prompt.pinText; textFormat: Text.PlainText } // tries that are left
            TextField {
                id: pin
                objectName: "pin"
                echoMode: TextInput.Password
                onAccepted: dialog.accept()
            }
        }
    }

    Connections {
        target: KeyStoreModel
        function onEntryRemovedChanged(removed) {
            window.outcome = removed ? "removed" : "not removed"
        }
    }
}
