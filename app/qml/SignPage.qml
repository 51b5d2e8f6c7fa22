// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

import Qt.labs.platform 1.1 as Platform

/// Signs a document with a key of a token, or checks a signature made so.
FormPage {
    id: page
    property Library library
    property int columns: 3
    property string wantedEntry
    property alias phase: work.phase
    readonly property bool working: work.working
    readonly property bool ready: signedDocument.ready && keys.currentIndex >= 0 && !working
    signal menuAsked()

    maximumWidth: Theme.fontSize * 52
    Accessible.name: qsTrId("trivex-app-sign-verify")

    function open(path) {
        probe.open(path)
        const signature = probe.kind === CertificateFile.SignatureKind
        probe.path = ""
        const kept = work.phase === SigningWork.SignatureOnly && !signature
            ? work.signatureFile : ""
        const subject = signature ? path.replace(/\.sig$/i, "") : path
        work.signatureFile = signature ? path : kept || path + ".sig"
        work.phase = SigningWork.Idle
        // A signature is no document: it brings its own along, or waits for it.
        if (signature && (subject === path || !Files.exists(subject)))
            work.phase = SigningWork.SignatureOnly
        else
            signedDocument.open(subject)
    }
    /// What is to be signed comes first, then the signature.
    function focusFirst() {
        if (ready)
            signature.focusFirst()
        else
            fileCard.focusFirst()
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
    /// Whether the signature can be kept, is found out before a PIN is asked for.
    function sign() {
        if (!ready)
            return
        work.refusal = work.saver.whyNot(work.signatureFile)
        if (work.refusal)
            work.phase = SigningWork.Unwritten
        else if (Files.exists(work.signatureFile))
            replaceDialog.ask(work.signatureFile)
        else
            start(false)
    }
    function start(verifying) {
        if (ready)
            work.start(verifying, keyRows.value(keys.currentIndex, "keyStoreEntry"),
                       keyRows.value(keys.currentIndex, "storeId"))
    }

    CertificateFile {
        id: probe
    }
    SignedDocument {
        id: signedDocument
        watched: page.visible && !page.working
    }
    SigningWork {
        id: work
        library: page.library
        document: signedDocument
        onPhaseChanged: if (phase) page.reveal(signature)
        onReplaceAsked: replaceDialog.ask(signatureFile)
    }
    SectionedModel {
        id: keyRows
        entries: page.library.entries
        filter: page.library.signers
        keyKind: EntryModel.RsaKind
        onCountChanged: {
            if (page.wantedEntry)
                page.selectEntry(page.wantedEntry)
            else if (keys.currentIndex < 0 && count > 0)
                keys.currentIndex = 0
        }
    }
    ModelCount {
        id: signerCount
        model: page.library.signers
    }
    Platform.FileDialog {
        id: fileDialog
        title: qsTrId("trivex-app-step-document")
        onAccepted: {
            page.open(Files.path(file))
            Qt.callLater(page.focusFirst)
        }
    }
    Platform.FileDialog {
        id: signatureDialog
        title: qsTrId("trivex-app-signature-file")
        onAccepted: work.signatureFile = Files.path(file)
    }

    function chooseElsewhere() {
        elsewhereDialog.currentFile = Files.url(work.signatureFile)
        elsewhereDialog.open()
    }
    Platform.FileDialog {
        id: elsewhereDialog
        title: qsTrId("trivex-app-signature-file")
        fileMode: Platform.FileDialog.SaveFile
        // Asked when it is signed, for the name that the file gets in the end.
        options: Platform.FileDialog.DontConfirmOverwrite
        onAccepted: {
            const path = Files.path(file)
            work.signatureFile = /\.sig$/i.test(path) ? path : path + ".sig"
            work.phase = SigningWork.Idle
        }
    }
    ReplaceDialog {
        id: replaceDialog
        objectName: "signReplaceDialog"
        // Before it is signed, or when a file has come there while it was.
        onConfirmed: {
            if (work.phase === SigningWork.Unwritten && !work.refusal) {
                work.place(true)
            } else {
                work.agreed = path
                page.start(false)
            }
        }
        onOtherAsked: page.chooseElsewhere()
    }

    PageHeader {
        title: qsTrId("trivex-app-sign-verify")
        menuVisible: page.columns < 3
        onMenuAsked: page.menuAsked()
        Layout.fillWidth: true
    }
    FileCard {
        id: fileCard
        document: signedDocument
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
            textFormat: Text.PlainText
            text: keys.currentIndex >= 0 ? keyRows.value(keys.currentIndex, "storeName") || "" : ""
            visible: text.length > 0
            color: Theme.textDim
            font.pixelSize: Theme.smallSize
            wrapMode: Text.WordWrap
            Layout.fillWidth: true
        }
        Label {
            textFormat: Text.PlainText
            objectName: "signKeyNote"
            text: signerCount.count === 0 ? qsTrId("trivex-app-no-key")
                : signerCount.count > keys.count ? qsTrId("trivex-app-only-rsa-keys") : ""
            visible: text.length > 0
            color: Theme.textDim
            font.pixelSize: Theme.smallSize
            wrapMode: Text.WordWrap
            Layout.fillWidth: true
        }
    }
    SignatureCard {
        id: signature
        work: work
        ready: page.ready
        onSignAsked: page.sign()
        onVerifyAsked: page.start(true)
        onOtherAsked: signatureDialog.open()
        onElsewhereAsked: page.chooseElsewhere()
        Layout.fillWidth: true
    }
}
