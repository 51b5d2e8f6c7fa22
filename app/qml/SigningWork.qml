// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Signs the document of this moment, or checks a signature of it.
Item {
    id: work
    /// What it does now, or what came of it; the signature's card has a text for each result.
    enum Phase {
        Idle,
        Signing,
        Verifying,
        Signed,
        Verified,
        Refused,
        Unsigned,
        WithoutSignature,
        Unwritten,
        Changed,
        Reread,
        SignatureOnly,
        Saving
    }
    property Library library
    property SignedDocument document
    property string signatureFile
    property int phase: SigningWork.Idle
    /// The file that may be replaced by the next signature, and by no other.
    property string agreed
    readonly property FileSaver saver: FileSaver {}
    /// The signature is made, and another file is in its place.
    signal replaceAsked()
    /// The token of the chosen key, or the one that asks.
    property alias storeId: token.storeId
    /// Why nothing could be written, as a sentence; set with the phase `Unwritten`.
    property string refusal
    readonly property bool working: phase === SigningWork.Signing || phase === SigningWork.Verifying
    readonly property bool stoppable: phase === SigningWork.Signing && token.busy
    readonly property string signerName: Texts.plain(signer.ceritficate.commonName)
    readonly property string failure: library.errors.cause
        ? library.errors.cause + " " + library.errors.advice : ""

    /// The entry whose key signs.
    property var signingEntry
    /// A PIN was typed here for this very attempt. One that was typed at the reader, or that nobody
    /// typed, is not asked for again: another attempt would only send it once more.
    property bool typed: false

    // The question ended with the work.
    onWorkingChanged: if (!working) pinDialog.withdraw()

    function start(verifying, entry, storeId_) {
        storeId = storeId_
        document.refresh()
        // Its own card says what became of it.
        if (!document.ready) {
            phase = SigningWork.Idle
            return
        }
        signer.setError(SignVerify.NoError)
        library.errors.clear()
        refusal = ""
        pinDialog.wasWrong = false
        signingEntry = entry
        phase = verifying ? SigningWork.Verifying : SigningWork.Signing
        if (verifying)
            signer.verify(document.loader.rawData, signatureFile, entry)
        else
            make()
    }
    function make() {
        typed = false
        const staged = saver.stagedPath("signature")
        // Nobody is asked for a PIN that a signature without a place would waste.
        if (!staged) {
            refusal = saver.problem
            phase = SigningWork.Unwritten
            return
        }
        signer.sign(document.loader.rawData, staged, signingEntry)
    }
    /// The PIN was wrong: its dialog asks once more, and nothing is sent but what is typed there.
    function askAgain() {
        if (phase !== SigningWork.Signing)
            return
        signer.setError(SignVerify.NoError)
        library.errors.clear()
        pinDialog.wasWrong = true
        make()
    }
    /// Puts the signature that was made in its place; asks where something else is there by now.
    function place(mayReplace) {
        const result = saver.place(signatureFile, mayReplace)
        refusal = saver.problem
        phase = result === FileSaver.Saved ? SigningWork.Signed : SigningWork.Unwritten
        if (result === FileSaver.Exists)
            replaceAsked()
    }
    function stop() {
        token.cancel(signer)
    }
    /// The result stands when the document is still the one that it was found for.
    function end(result) {
        refusal = failure
        const other = document.refresh() && !refusal
        if (result === SigningWork.Signed && !other)
            place(agreed === signatureFile)
        else
            phase = other ? SigningWork.Changed : result
        agreed = ""
    }

    SignVerify {
        id: signer
        objectName: "signer"
        // A question that another operation raised and its own prompt declined ends here too.
        onGetPin: work.working && token.showAsker() ? pinDialog.ask() : pinRejected()
        onSignSuccess: work.end(SigningWork.Signed)
        onVerifySuccess: work.end(SigningWork.Verified)
        onErrorChanged: {
            if (error === SignVerify.NoError || !work.working)
                return
            if (work.phase === SigningWork.Signing && work.typed
                    && work.library.errors.wrongPin)
                Qt.callLater(work.askAgain)
            else
                work.end(error === SignVerify.ErrorNotFoundCmsFile ? SigningWork.WithoutSignature
                         : work.phase === SigningWork.Verifying ? SigningWork.Refused
                         : SigningWork.Unsigned)
        }
    }
    PinDialog {
        id: pinDialog
        objectName: "signPinDialog"
        tokenName: token.name
        purposeText: qsTrId("trivex-app-purpose-sign")
        pinText: token.pinText
        lastTry: token.lastTry
        locked: token.locked
        onSubmitted: {
            if (!work.working)
                return
            work.typed = true
            signer.pinAccepted(pin)
        }
        onLeft: signer.pinRejected()
    }
    TokenInfo {
        id: token
        property bool seen: false
        // A token that goes ends its question. A key in no token has a token that was never there.
        onChanged: {
            if (seen && !present)
                pinDialog.withdraw()
            seen = present
        }
    }
    Connections {
        target: work.document
        function onChanged() {
            work.phase = work.document.ready && work.phase ? SigningWork.Reread : SigningWork.Idle
        }
    }
}
