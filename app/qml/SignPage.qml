// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0

import Qt.labs.platform 1.1 as Platform

/// Signs a document with a key of a token, or checks a signature made so.
Flickable {
    id: page
    property Library library
    property int columns: 3
    property string wantedEntry
    readonly property bool working: state_ === "signing" || state_ === "verifying"
    property string state_: ""
    /// What was in the way of a check that failed, of that moment.
    property string refusal
    property string signatureFile
    readonly property bool ready: loader.status === LoaderFile.Ready && keys.currentIndex >= 0
        && !working
    readonly property string failure: library.errors.cause
        ? library.errors.cause + " " + library.errors.advice : ""
    signal menuAsked()
    signal toast(string text)

    contentWidth: width
    contentHeight: column.implicitHeight + Theme.unit * 4
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {}
    Accessible.role: Accessible.Pane
    Accessible.name: qsTrId("trivex-app-sign-verify")

    function open(path) {
        state_ = ""
        document.tried = path
        loader.filePath = path
        signatureFile = path + ".sig"
    }
    function selectEntry(entryId) {
        wantedEntry = entryId
        for (let i = 0; i < keyRows.count; ++i) {
            if (keyRows.value(i, "entryId") === entryId) {
                keys.currentIndex = i
                return
            }
        }
        // Never another key in the place of the one that was chosen.
        keys.currentIndex = -1
    }
    function work(verifying) {
        if (!ready)
            return
        signer.setError(SignVerify.NoError)
        library.errors.clear()
        pinDialog.storeId = keyRows.value(keys.currentIndex, "storeId")
        const entry = keyRows.value(keys.currentIndex, "keyStoreEntry")
        state_ = verifying ? "verifying" : "signing"
        if (verifying)
            signer.verify(loader.rawData, signatureFile, entry)
        else
            signer.sign(loader.rawData, signatureFile, entry)
    }

    LoaderFile {
        id: loader
    }
    SectionedModel {
        id: keyRows
        entries: page.library.entries
        filter: page.library.category("personal").filter
        onCountChanged: {
            if (page.wantedEntry)
                page.selectEntry(page.wantedEntry)
            else if (keys.currentIndex < 0 && count > 0)
                keys.currentIndex = 0
        }
    }
    SignVerify {
        id: signer
        objectName: "signer"
        // A question that another operation raised and its own prompt declined ends here too.
        onGetPin: page.working ? pinDialog.ask() : pinRejected()
        onSignSuccess: {
            // The signer does not look whether the file was written.
            page.state_ = Desktop.hasContents(page.signatureFile) ? "signed" : "unwritten"
        }
        onVerifySuccess: page.state_ = "verified"
        onErrorChanged: {
            if (error === SignVerify.NoError || !page.working)
                return
            page.refusal = page.failure
            page.state_ = error === SignVerify.ErrorNotFoundCmsFile ? "nosignature"
                : page.state_ === "verifying" ? "refused" : "unsigned"
        }
    }
    PinDialog {
        id: pinDialog
        property alias storeId: token.storeId
        objectName: "signPinDialog"
        tokenName: token.name
        purposeText: qsTrId("trivex-app-purpose-sign")
        pinText: token.pinText
        lastTry: token.lastTry
        locked: token.locked
        onSubmitted: signer.pinAccepted(pin)
        onLeft: signer.pinRejected()
    }
    TokenInfo {
        id: token
        onChanged: if (!present && pinDialog.opened) pinDialog.close()
    }
    Platform.FileDialog {
        id: fileDialog
        title: qsTrId("trivex-app-step-document")
        onAccepted: page.open(Desktop.path(file))
    }
    Platform.FileDialog {
        id: signatureDialog
        title: qsTrId("trivex-app-signature-file")
        onAccepted: page.signatureFile = Desktop.path(file)
    }

    FillColumn {
        id: column
        width: Math.min(page.width - Theme.unit, Theme.fontSize * 52)
        spacing: Theme.unit * 1.5
        PageHeader {
            title: qsTrId("trivex-app-sign-verify")
            menuVisible: page.columns < 3
            onMenuAsked: page.menuAsked()
            Layout.fillWidth: true
        }
        FileCard {
            id: document
            loader: loader
            enabled: !page.working
            onChooseAsked: fileDialog.open()
            Layout.fillWidth: true
        }
        Card {
            title: qsTrId("trivex-app-step-signer")
            enabled: !page.working
            Layout.fillWidth: true
            ComboBox {
                id: keys
                objectName: "signKeyChooser"
                model: keyRows
                textRole: "name"
                enabled: count > 0
                Accessible.name: qsTrId("trivex-app-step-signer") + ": " + currentText
                Layout.fillWidth: true
                onActivated: page.wantedEntry = keyRows.value(index, "entryId")
            }
            Label {
                text: keys.count === 0 ? qsTrId("trivex-app-no-key")
                    : keys.currentIndex >= 0 ? keyRows.value(keys.currentIndex, "storeName") || "" : ""
                color: Theme.textDim
                font.pixelSize: Theme.smallSize
                wrapMode: Text.WordWrap
                Layout.fillWidth: true
            }
        }
        Card {
            title: qsTrId("trivex-app-step-signature")
            Layout.fillWidth: true
            DetailRow {
                label: qsTrId("trivex-app-signature-file")
                value: page.signatureFile
                visible: value.length > 0
                Layout.fillWidth: true
            }
            Flow {
                spacing: Theme.unit
                Layout.fillWidth: true
                Button {
                    objectName: "doSign"
                    text: qsTrId("trivex-app-sign-action")
                    icon.source: Theme.icon("sign")
                    highlighted: true
                    enabled: page.ready
                    onClicked: page.work(false)
                }
                Button {
                    objectName: "doVerify"
                    text: qsTrId("trivex-app-verify-action")
                    icon.source: Theme.icon("check")
                    enabled: page.ready
                    onClicked: page.work(true)
                }
                Button {
                    text: qsTrId("trivex-app-other-signature")
                    flat: true
                    enabled: !page.working
                    onClicked: signatureDialog.open()
                }
            }
            RowLayout {
                objectName: "signBusy"
                visible: page.working
                Layout.fillWidth: true
                BusyIndicator {
                    Accessible.name: workLabel.text
                }
                Label {
                    id: workLabel
                    text: page.state_ === "signing" ? qsTrId("trivex-app-busy-sign")
                                                    : qsTrId("trivex-app-busy-verify")
                    Layout.fillWidth: true
                }
                Button {
                    objectName: "signCancel"
                    text: qsTrId("trivex-app-stop")
                    visible: page.state_ === "signing" && token.busy
                    onClicked: token.cancel()
                }
            }
            Notice {
                objectName: "signResult"
                readonly property var results: ({
                    signed: [1, qsTrId("trivex-app-signed"), page.signatureFile],
                    verified: [1, qsTrId("trivex-app-verified"),
                               qsTrId("trivex-app-verified-by").arg(signer.ceritficate.commonName)],
                    refused: [3, qsTrId("trivex-app-refused"),
                              page.refusal || qsTrId("trivex-app-refused-advice")],
                    unsigned: [3, qsTrId("trivex-app-unsigned"),
                               page.failure || qsTrId("trivex-app-unsigned-advice")],
                    nosignature: [3, qsTrId("trivex-app-nosignature"),
                                  Desktop.whyNotRead(page.signatureFile)],
                    unwritten: [3, qsTrId("trivex-app-unwritten"),
                                Desktop.whyNotWritten(Desktop.folder(page.signatureFile))]
                })
                readonly property var result: results[page.state_]
                level: result ? result[0] : 0
                text: result ? result[1] : ""
                detail: result ? result[2] : ""
                actionText: page.state_ === "signed" ? qsTrId("trivex-app-open-folder") : ""
                onAction: Desktop.openFolder(page.signatureFile)
                Layout.fillWidth: true
            }
        }
    }
}
