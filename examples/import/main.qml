// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

// Brings a bundle, a key with its certificates, from a file onto a token, and shows how far it is.
ApplicationWindow {
    id: window
    property string outcome
    property bool writing: false
    visible: true
    width: 480
    height: 640
    title: "Import"
    onOutcomeChanged: console.log(outcome)

    // Opens the file in a thread of its own, for a preview: deriving a key may take long.
    CertificateFile {
        id: file
        path: path.text
    }
    // Answers the token's question for the PIN.
    PinPromptDialog {
        objectName: "pinPrompt"
    }

    ColumnLayout {
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 16 }
        TextField { id: path; objectName: "path"; placeholderText: "File (.p12, .pfx)"; Layout.fillWidth: true }
        TextField {
            id: password
            objectName: "password"
            placeholderText: "Its password"
            echoMode: TextInput.Password
            Layout.fillWidth: true
            onAccepted: file.unlock(text)
        }
        Button {
            objectName: "open"
            text: "Open"
            enabled: file.kind === CertificateFile.BundleKind && !file.unlocking
            onClicked: file.unlock(password.text)
        }
        Label { text: file.problem; visible: text; textFormat: Text.PlainText; wrapMode: Text.Wrap; Layout.fillWidth: true }
        Repeater {
            model: file.items
            Label { text: model.name + ", of " + model.detail; textFormat: Text.PlainText }
        }
        TokenChooser { id: token; objectName: "token"; locations: KeyStoreModel.certLocation; Layout.fillWidth: true }
        Button {
            objectName: "import"
            text: "Import"
            enabled: file.unlocked && token.usable && !window.writing
            onClicked: {
                window.outcome = ""
                KeyStoreModel.setCertLocationId(token.location)
                window.writing = KeyStoreModel.keyBundleFromFile(file.path, password.text)
                if (window.writing)
                    KeyStoreModel.importKeyBundle() // returns at once
                else
                    window.outcome = "the file could not be read"
            }
        }
        ProgressBar {
            indeterminate: true
            visible: window.writing || file.unlocking
            Layout.fillWidth: true
        }
        Label { text: window.outcome; textFormat: Text.PlainText; wrapMode: Text.Wrap; Layout.fillWidth: true }
    }

    TokenErrors { id: errors }
    Connections {
        target: KeyStoreModel
        // The argument says that no entry came of it.
        function onEntryWrittenChanged(isEmpty) {
            window.writing = false
            window.outcome = isEmpty ? "not imported: " + errors.cause : "imported"
            KeyStoreModel.resetImportedKeyBundle() // the key leaves the memory
        }
    }
}
