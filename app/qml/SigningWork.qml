// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Signs the document of this moment, or checks a signature of it. What came of it is `state_`:
/// one of the results of the signature's card.
Item {
    id: work
    property Library library
    property SignedDocument document
    property string signatureFile
    property string state_
    /// The file that may be replaced by the next signature, and by no other.
    property string agreed
    readonly property FileSaver saver: FileSaver {}
    /// The signature is made, and another file is in its place.
    signal replaceAsked()
    /// The token of the chosen key, or the one that asks.
    property alias storeId: token.storeId
    /// What was in the way, of that moment.
    property string refusal
    readonly property bool working: state_ === "signing" || state_ === "verifying"
    readonly property bool stoppable: state_ === "signing" && token.busy
    readonly property string signerName: Texts.plain(signer.ceritficate.commonName)
    readonly property string failure: library.errors.cause
        ? library.errors.cause + " " + library.errors.advice : ""

    // The question ended with the work.
    onWorkingChanged: if (!working) pinDialog.withdraw()

    function start(verifying, entry, storeId_) {
        storeId = storeId_
        document.refresh()
        // Its own card says what became of it.
        if (!document.ready) {
            state_ = ""
            return
        }
        signer.setError(SignVerify.NoError)
        library.errors.clear()
        refusal = ""
        state_ = verifying ? "verifying" : "signing"
        if (verifying)
            signer.verify(document.loader.rawData, signatureFile, entry)
        else
            signer.sign(document.loader.rawData, saver.stagedPath("signature"), entry)
    }
    /// Puts the signature that was made in its place; asks where something else is there by now.
    function place(mayReplace) {
        const result = saver.place(signatureFile, mayReplace)
        refusal = saver.problem
        state_ = result === FileSaver.Saved ? "signed" : "unwritten"
        if (result === FileSaver.Exists)
            replaceAsked()
    }
    function stop() {
        token.cancel()
    }
    /// The result stands when the document is still the one that it was found for.
    function end(result) {
        refusal = failure
        const other = document.refresh() && !refusal
        if (result === "signed" && !other)
            place(agreed === signatureFile)
        else
            state_ = other ? "changed" : result
        agreed = ""
    }

    SignVerify {
        id: signer
        objectName: "signer"
        // A question that another operation raised and its own prompt declined ends here too.
        onGetPin: work.working && token.showAsker() ? pinDialog.ask() : pinRejected()
        onSignSuccess: work.end("signed")
        onVerifySuccess: work.end("verified")
        onErrorChanged: {
            if (error !== SignVerify.NoError && work.working)
                work.end(error === SignVerify.ErrorNotFoundCmsFile ? "nosignature"
                         : work.state_ === "verifying" ? "refused" : "unsigned")
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
        onSubmitted: if (work.working) signer.pinAccepted(pin)
        onLeft: signer.pinRejected()
    }
    TokenInfo {
        id: token
        property bool seen: false
        // Its question is over by itself. What no store of a token holds was never there.
        onChanged: {
            if (seen && !present)
                pinDialog.withdraw()
            seen = present
        }
    }
    Connections {
        target: work.document
        function onChanged() { work.state_ = work.document.ready && work.state_ ? "reread" : "" }
    }
}
