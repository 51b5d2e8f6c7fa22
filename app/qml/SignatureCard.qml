// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// The signature: its file, what can be done with it, and what came of that.
Card {
    id: card
    /// A `SigningWork` or a `CmsWork`.
    property Item work
    property bool ready: false
    property alias form: forms.form
    readonly property alias raw: forms.raw
    function messageForm() { return forms.messageForm() }
    property alias notice: notice
    /// What is being done, and what came of it.
    readonly property alias outcome: outcome
    signal signAsked()
    signal verifyAsked()
    signal otherAsked()
    signal elsewhereAsked()
    signal saveAsked()
    function focusFirst() {
        signButton.forceActiveFocus(Qt.OtherFocusReason)
    }
    title: qsTrId("trivex-app-step-signature")

    SignatureForm {
        id: forms
        enabled: !card.work.working
        Layout.fillWidth: true
    }
    DetailRow {
        objectName: "signatureFile"
        label: qsTrId("trivex-app-signature-file")
        value: card.work.signatureFile
        visible: value.length > 0
        Layout.fillWidth: true
    }
    Flow {
        spacing: Theme.unit
        Layout.fillWidth: true
        Button {
            id: signButton
            objectName: "doSign"
            text: qsTrId("trivex-app-sign-action")
            icon.source: Theme.icon("sign")
            highlighted: true
            enabled: card.ready
            onClicked: card.signAsked()
        }
        Button {
            objectName: "doVerify"
            text: qsTrId("trivex-app-verify-action")
            icon.source: Theme.icon("check")
            // Who checks needs no key of one's own.
            enabled: card.raw ? card.ready : !card.work.working && card.work.signatureFile
            onClicked: card.verifyAsked()
        }
        Button {
            objectName: "otherSignature"
            text: qsTrId("trivex-app-other-signature")
            flat: true
            width: Math.min(implicitWidth, parent.width)
            enabled: !card.work.working
            onClicked: card.otherAsked()
        }
        Button {
            objectName: "signElsewhere"
            text: qsTrId("trivex-app-signature-elsewhere")
            flat: true
            width: Math.min(implicitWidth, parent.width)
            visible: card.ready
            onClicked: card.elsewhereAsked()
        }
        Button {
            objectName: "saveDocument"
            text: qsTrId("trivex-app-save-document")
            flat: true
            width: Math.min(implicitWidth, parent.width)
            visible: !card.raw && card.work.attached
            enabled: !card.work.working
            onClicked: card.saveAsked()
        }
    }
    FillColumn {
        id: outcome
        spacing: Theme.unit
        Layout.fillWidth: true
        RowLayout {
            objectName: "signBusy"
            visible: card.work.working
            Layout.fillWidth: true
            BusyIndicator {
                Accessible.name: workLabel.text
            }
            Label {
                textFormat: Text.PlainText
                id: workLabel
                text: card.work.phase === SigningWork.Signing ? qsTrId("trivex-app-busy-sign")
                    : card.work.phase === SigningWork.Saving ? qsTrId("trivex-app-busy-write")
                    : qsTrId("trivex-app-busy-verify")
                Layout.fillWidth: true
            }
            ProgressBar {
                visible: !card.raw
                indeterminate: value < 0
                value: card.raw ? -1 : card.work.progress
                Layout.maximumWidth: Theme.fontSize * 12
            }
            Button {
                objectName: "signCancel"
                text: qsTrId("trivex-app-stop")
                visible: card.work.stoppable
                onClicked: card.work.stop()
            }
        }
        Notice {
            id: notice
            objectName: "signResult"
            readonly property var results: ({
                [SigningWork.Signed]: [1, qsTrId("trivex-app-signed"), card.work.signatureFile
                    + (card.raw ? "" : "\n" + (card.form === SignatureForm.Attached
                        ? qsTrId("trivex-app-signed-attached-hint")
                        : qsTrId("trivex-app-signed-detached-hint")))],
                [SigningWork.Verified]: card.raw ? [1, qsTrId("trivex-app-verified"),
                    qsTrId("trivex-app-verified-by").arg(card.work.signerName)] : null,
                [SigningWork.Refused]: [3, card.raw ? qsTrId("trivex-app-refused")
                    : qsTrId("trivex-app-verify-failed"),
                    card.work.refusal || qsTrId("trivex-app-refused-advice")],
                [SigningWork.Unsigned]: [3, qsTrId("trivex-app-unsigned"),
                    card.work.failure || qsTrId("trivex-app-unsigned-advice")],
                [SigningWork.WithoutSignature]: [3, qsTrId("trivex-app-nosignature"),
                    card.raw || !Files.exists(card.work.signatureFile)
                        ? Files.whyNotRead(card.work.signatureFile) : card.work.refusal],
                [SigningWork.Unwritten]: [3, qsTrId("trivex-app-unwritten"),
                    card.work.refusal || qsTrId("trivex-app-signature-waits")],
                [SigningWork.SignatureOnly]: [0, qsTrId("trivex-app-signature-opened"),
                    qsTrId("trivex-app-signature-opened-advice")],
                [SigningWork.Changed]: [2, qsTrId("trivex-app-document-changed"),
                    qsTrId("trivex-app-document-changed-advice")],
                [SigningWork.Reread]: [0, qsTrId("trivex-app-document-reread"), ""]
            })
            readonly property var result: results[card.work.phase]
            level: result ? result[0] : 0
            text: result ? result[1] : ""
            detail: result ? result[2] : ""
            actionText: card.work.phase === SigningWork.Signed ? qsTrId("trivex-app-open-folder") : ""
            onAction: Desktop.openFolder(card.work.signatureFile)
            Layout.fillWidth: true
        }
        SignerNotices {
            objectName: "signerNotices"
            visible: !card.raw && card.work.checked
            signatures: visible ? card.work.signatures : null
            Layout.fillWidth: true
        }
    }
}
