// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0

// Signs a file with a key on a token, and checks the signature, which lies beside it.
ApplicationWindow {
    id: window
    property string outcome
    readonly property string signature: file.filePath + ".sig"
    visible: true
    width: 480
    height: 640
    title: "Sign a file"
    onOutcomeChanged: console.log(outcome)

    LoaderFile { id: file; filePath: path.text }
    SignVerify {
        id: signer
        onGetPin: dialog.ask()
        onSignSuccess: window.outcome = "signed"
        onVerifySuccess: window.outcome = "the signature is good"
        onErrorChanged: if (error !== SignVerify.NoError) window.outcome = "failed with error " + error
    }
    PinDialog {
        id: dialog
        tokenName: keys.currentText
        onSubmitted: signer.pinAccepted(pin)
        onLeft: signer.pinRejected()
    }

    // The key of each row, in the order of the box.
    Instantiator {
        id: entries
        model: keys.model
        QtObject { readonly property KeyStoreEntry key: model.keyStoreEntry }
    }
    ColumnLayout {
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 16 }
        TextField { id: path; objectName: "path"; placeholderText: "File"; Layout.fillWidth: true }
        Label { text: file.fileHash; textFormat: Text.PlainText; wrapMode: Text.WrapAnywhere; Layout.fillWidth: true }
        ComboBox {
            id: keys
            objectName: "keys"
            textRole: "name"
            onCountChanged: if (currentIndex < 0) currentIndex = 0 // rows come later
            // Names come from strangers: the style's own rows may take one for rich text.
            delegate: PlainDelegate {
                width: keys.width
                text: model.name
                highlighted: keys.highlightedIndex === index
            }
            contentItem: Label {
                leftPadding: 8
                text: keys.displayText
                textFormat: Text.PlainText
                elide: Text.ElideRight
                verticalAlignment: Text.AlignVCenter
            }
            model: CertificateModel {
                sourceModel: KeyStoreModel
                filterRole: KeyStoreModel.SmartCard
            }
            Layout.fillWidth: true
        }
        RowLayout {
            enabled: file.status === LoaderFile.Ready && keys.currentIndex >= 0
            Button {
                objectName: "sign"
                text: "Sign"
                onClicked: {
                    window.outcome = ""
                    signer.sign(file.rawData, window.signature, entries.objectAt(keys.currentIndex).key)
                }
            }
            Button {
                objectName: "verify"
                text: "Verify"
                onClicked: {
                    window.outcome = ""
                    signer.verify(file.rawData, window.signature, entries.objectAt(keys.currentIndex).key)
                }
            }
        }
        Label { text: window.outcome; textFormat: Text.PlainText }
    }
}
