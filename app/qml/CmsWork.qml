// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto.Tools 1.0

/// Signs the document of this moment so that others can check it, or checks such a signature,
/// whoever made it. Its phases are those of `SigningWork`.
Item {
    id: work
    property Library library
    property SignedDocument document
    property string signatureFile
    property int phase: SigningWork.Idle
    property int form: DocumentSigner.Detached
    /// The file that may be replaced by the next signature, and by no other.
    property string agreed
    readonly property FileSaver saver: FileSaver {}
    /// What was in the way, of that moment.
    property string refusal
    readonly property bool working: phase === SigningWork.Signing
        || phase === SigningWork.Verifying || phase === SigningWork.Saving
    readonly property bool stoppable: signing.running || checking.running
    readonly property real progress: signing.running ? signing.progress
        : checking.running ? checking.progress : -1
    readonly property string failure: library.errors.cause
        ? library.errors.cause + " " + library.errors.advice : refusal
    readonly property alias signatures: checking.signers
    /// The document is in the signature that was checked, and can be saved.
    readonly property bool attached: checked && checking.attached
    /// The signatures that were found stand.
    readonly property bool checked: phase === SigningWork.Verified || phase === SigningWork.Saving
    readonly property string documentName: checking.documentName(signatureFile)
    /// The signature is made, and another file is in its place.
    signal replaceAsked()
    signal saved(string path)
    signal saveRefused(string reason)
    signal saveReplaceAsked(string path)

    function targetFor(path, form) { return path ? signing.targetFor(path, form) : "" }
    function isMessage(path) { return checking.isMessage(path) }
    function hasDocument(path) { return checking.hasDocument(path) }
    function documentOf(path) { return checking.documentOf(path) }

    function start(verifying, entry) {
        library.errors.clear()
        refusal = ""
        if (verifying) {
            check()
            return
        }
        document.refresh()
        if (!document.ready) {
            phase = SigningWork.Idle
            return
        }
        phase = SigningWork.Signing
        signing.sign(entry, document.path, signatureFile, form, agreed === signatureFile)
        agreed = ""
    }
    function check() {
        if (checking.running)
            return
        document.refresh()
        refusal = ""
        phase = SigningWork.Verifying
        checking.verify(signatureFile, document.path)
    }
    /// Puts the signature that was made in the place of what is there.
    function place() {
        phase = SigningWork.Signing
        signing.replace()
    }
    function stop() {
        signing.cancel()
        checking.cancel()
    }
    function save(path, mayReplace) {
        if (checking.running || !attached)
            return
        phase = SigningWork.Saving
        checking.saving = path
        checking.saveDocument(path, mayReplace)
    }

    DocumentSigner {
        id: signing
        readonly property var phases: ({
            [DocumentSigner.NoError]: SigningWork.Signed,
            [DocumentSigner.Changed]: SigningWork.Changed,
            [DocumentSigner.NotWritten]: SigningWork.Unwritten,
            [DocumentSigner.SameFile]: SigningWork.Unwritten,
            [DocumentSigner.Exists]: SigningWork.Unwritten
        })
        onFinished: {
            work.refusal = error === DocumentSigner.NotWritten
                ? work.saver.whyNot(work.signatureFile) || message
                : error === DocumentSigner.Exists ? "" : message
            work.document.refresh()
            work.phase = error in phases ? phases[error] : SigningWork.Unsigned
            if (error === DocumentSigner.Exists)
                work.replaceAsked()
        }
    }
    DocumentVerifier {
        id: checking
        entries: work.library.entries
        /// Where the document of the message is being saved; else nothing is.
        property string saving
        readonly property var phases: ({
            [DocumentVerifier.NoError]: SigningWork.Verified,
            [DocumentVerifier.NoDocument]: SigningWork.SignatureOnly,
            [DocumentVerifier.NoMessage]: SigningWork.WithoutSignature
        })
        onFinished: {
            const path = saving
            saving = ""
            if (path) {
                work.endSaving(path, error, message)
                return
            }
            work.refusal = message
            work.phase = error in phases ? phases[error] : SigningWork.Refused
        }
    }
    function endSaving(path, error, message) {
        phase = SigningWork.Verified
        if (error === DocumentVerifier.NoError)
            saved(path)
        else if (error === DocumentVerifier.Exists)
            saveReplaceAsked(path)
        else
            saveRefused(message)
    }
    Connections {
        target: work.document
        function onChanged() {
            if (!work.working)
                work.phase = work.document.ready && work.phase ? SigningWork.Reread
                                                               : SigningWork.Idle
        }
    }
}
