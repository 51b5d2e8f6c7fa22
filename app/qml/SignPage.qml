// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

import Qt.labs.platform 1.1 as Platform

/// Signs a document with a key of a token, or checks the signatures of one, whoever made them.
FormPage {
    id: page
    property Library library
    property int columns: 3
    property alias phase: rawWork.phase
    property alias form: signature.form
    readonly property bool raw: signature.raw
    readonly property Item work: raw ? rawWork : cmsWork
    readonly property bool working: work.working
    readonly property bool ready: signedDocument.ready && keys.chosen && !working
    signal menuAsked()
    signal told(string text)
    signal failed(string cause, string advice)

    maximumWidth: Theme.fontSize * 52
    Accessible.name: qsTrId("trivex-app-sign-verify")

    function open(path) {
        probe.open(path)
        const signature = probe.kind === CertificateFile.SignatureKind
        probe.path = ""
        if (!signature && cmsWork.isMessage(path))
            openMessage(path)
        else if (!raw && !signature)
            openDocument(path)
        else
            openRaw(path, signature)
    }
    function openRaw(path, signature) {
        form = SignatureForm.Raw
        const kept = rawWork.phase === SigningWork.SignatureOnly && !signature
            ? rawWork.signatureFile : ""
        const subject = signature ? path.replace(/\.sig$/i, "") : path
        rawWork.signatureFile = signature ? path : kept || path + ".sig"
        rawWork.phase = SigningWork.Idle
        // A signature is no document: it brings its own along, or waits for it.
        if (signature && (subject === path || !Files.exists(subject)))
            rawWork.phase = SigningWork.SignatureOnly
        else
            signedDocument.open(subject)
    }
    /// A signature that waits for this document is checked at once.
    function openDocument(path) {
        const waits = cmsWork.phase === SigningWork.SignatureOnly
        signedDocument.open(path)
        cmsWork.phase = SigningWork.Idle
        if (waits)
            cmsWork.check()
        else
            cmsWork.signatureFile = cmsWork.targetFor(path, signature.messageForm())
    }
    /// It has its document in it, brings it along, or waits for it.
    function openMessage(path) {
        const inside = cmsWork.hasDocument(path)
        form = inside ? SignatureForm.Attached : SignatureForm.Detached
        const beside = inside ? "" : cmsWork.documentOf(path)
        if (beside)
            signedDocument.open(beside)
        else
            signedDocument.close()
        cmsWork.signatureFile = path
        cmsWork.check()
    }
    /// The name goes with the form, but for a signature that was opened.
    function formChosen() {
        if (!signedDocument.path)
            return
        rawWork.signatureFile = signedDocument.path + ".sig"
        rawWork.phase = SigningWork.Idle
        cmsWork.signatureFile = cmsWork.targetFor(signedDocument.path, signature.messageForm())
        cmsWork.phase = SigningWork.Idle
    }
    function takeSignature(path) {
        if (cmsWork.isMessage(path) && (raw || !signedDocument.ready || cmsWork.hasDocument(path)))
            openMessage(path)
        else
            work.signatureFile = path
    }
    /// What is to be signed comes first, then the signature.
    function focusFirst() {
        if (ready)
            signature.focusFirst()
        else
            fileCard.focusFirst()
    }
    function selectEntry(entryId) {
        keys.selectEntry(entryId)
    }
    /// Whether the signature can be kept, is found out before a PIN is asked for.
    function sign() {
        if (!ready)
            return
        if (!raw && !work.signatureFile)
            work.signatureFile = cmsWork.targetFor(signedDocument.path, signature.messageForm())
        work.refusal = work.saver.whyNot(work.signatureFile)
        if (work.refusal)
            work.phase = SigningWork.Unwritten
        else if (Files.exists(work.signatureFile))
            replaceDialog.ask(work.signatureFile)
        else
            start(false)
    }
    function start(verifying) {
        if (ready || verifying && !raw)
            work.start(verifying, keys.value("keyStoreEntry"), keys.value("storeId"))
    }

    ConfirmExpired { id: confirmExpired }
    CertificateFile {
        id: probe
    }
    SignedDocument {
        id: signedDocument
        raw: page.raw
        watched: page.visible && !page.working
    }
    SigningWork {
        id: rawWork
        library: page.library
        document: signedDocument
        onPhaseChanged: if (phase) page.reveal(signature.outcome)
        onReplaceAsked: replaceDialog.ask(signatureFile)
    }
    CmsWork {
        id: cmsWork
        library: page.library
        document: signedDocument
        form: signature.messageForm()
        onPhaseChanged: if (phase) page.reveal(signature.outcome)
        onReplaceAsked: replaceDialog.ask(signatureFile)
        onSaved: page.told(qsTrId("trivex-app-document-saved"))
        onSaveRefused: page.failed(qsTrId("trivex-app-document-unsaved"), reason)
    }
    DocumentSaving {
        id: documentSaving
        work: cmsWork
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
        onAccepted: page.takeSignature(Files.path(file))
    }

    function chooseElsewhere() {
        elsewhereDialog.offer(page.work.signatureFile)
    }
    SaveDialog {
        id: elsewhereDialog
        title: qsTrId("trivex-app-signature-file")
        onAccepted: {
            const path = Files.path(file)
            const suffix = [".p7s", ".p7m", ".sig"][page.form]
            page.work.signatureFile = path.toLowerCase().endsWith(suffix) ? path : path + suffix
            page.work.phase = SigningWork.Idle
        }
    }
    ReplaceDialog {
        id: replaceDialog
        objectName: "signReplaceDialog"
        // Before it is signed, or when a file has come there while it was.
        onConfirmed: {
            if (page.work.phase === SigningWork.Unwritten && !page.work.refusal) {
                page.work.place(true)
            } else {
                page.work.agreed = path
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
    SignerCard {
        id: keys
        library: page.library
        rsaOnly: page.raw
        enabled: !page.working
        Layout.fillWidth: true
    }
    SignatureCard {
        id: signature
        work: page.work
        ready: page.ready
        onFormChanged: page.formChosen()
        onSaveAsked: documentSaving.choose()
        onSignAsked: confirmExpired.guard(keys, page.sign)
        onVerifyAsked: page.start(true)
        onOtherAsked: signatureDialog.open()
        onElsewhereAsked: page.chooseElsewhere()
        Layout.fillWidth: true
    }
}
