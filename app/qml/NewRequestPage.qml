// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// A key on a token and a request for it, in three steps on one page.
FormPage {
    id: page
    property int columns: 3
    property bool signing: false
    property bool explained: false
    /// A key that is being made, or has no request yet: the page is to stay.
    readonly property bool unfinished: keyCard.generating || signing || keyCard.made && !savedPath
    property string savedPath
    signal menuAsked()
    signal failed(string cause, string advice)
    signal startOverAsked()

    maximumWidth: Theme.fontSize * 52
    Accessible.name: qsTrId("trivex-app-new-request")

    /// The token's operation ended without a key or a request; why, the window says.
    function generationEnded() {
        keyCard.generating = false
        explained = true
    }
    function focusFirst() {
        if (savedPath)
            savedCard.focusFirst()
        else if (keyCard.made)
            form.focusFirst()
        else
            keyCard.focusFirst()
    }
    function create() {
        if (signing || !form.check())
            return
        form.apply(request)
        explained = false
        signing = true
        request.createRequest()
        signing = false
        if (!savedPath && !explained)
            failed(qsTrId("trivex-app-request-not-made"),
                   Files.whyNotWritten(request.requestPath()))
    }

    CertificateRequest {
        id: request
        keyStoreModel: KeyStoreModel
        Component.onCompleted: {
            init()
            keyCard.prepare()
        }
        onCreateKeyPairDone: {
            keyCard.finish()
            form.focusFirst()
        }
        onRequestCreated: {
            page.savedPath = requestPath() + fileName
            page.reveal(savedCard)
            savedCard.focusFirst()
        }
        onMissingPrivateKey: {
            page.explained = true
            page.failed(qsTrId("trivex-app-request-no-key"),
                        qsTrId("trivex-app-request-no-key-advice"))
        }
    }
    PageHeader {
        title: qsTrId("trivex-app-new-request")
        menuVisible: page.columns < 3
        onMenuAsked: page.menuAsked()
        Layout.fillWidth: true
    }
    NewKeyCard {
        id: keyCard
        request: request
        narrow: page.width < Theme.fontSize * 36
        onFailed: page.failed(cause, advice)
        Layout.fillWidth: true
    }
    Card {
        title: qsTrId("trivex-app-step-subject")
        opacity: keyCard.made ? 1 : 0.6
        Layout.fillWidth: true
        SubjectForm {
            id: form
            enabled: keyCard.made && !page.savedPath && !page.signing
            Keys.onReturnPressed: createButton.enabled && page.create()
            Keys.onEnterPressed: createButton.enabled && page.create()
            Layout.fillWidth: true
        }
        Flow {
            visible: !page.signing
            spacing: Theme.unit
            Layout.fillWidth: true
            Layout.topMargin: Theme.unit
            Button {
                id: createButton
                objectName: "createRequest"
                text: qsTrId("trivex-app-create-request")
                icon.source: Theme.icon("request")
                highlighted: true
                enabled: keyCard.made && form.complete && !page.savedPath && !page.signing
                onClicked: page.create()
            }
            Button {
                objectName: "leaveKey"
                text: qsTrId("trivex-app-another-request")
                flat: true
                visible: keyCard.made && !page.savedPath
                onClicked: page.startOverAsked()
            }
        }
        RowLayout {
            objectName: "requestBusy"
            visible: page.signing
            spacing: Theme.unit
            Layout.fillWidth: true
            Layout.topMargin: Theme.unit
            BusyIndicator {
                Accessible.name: signingLabel.text
            }
            Label {
                textFormat: Text.PlainText
                id: signingLabel
                text: qsTrId("trivex-app-busy-sign")
                Layout.fillWidth: true
                Accessible.role: Accessible.AlertMessage
            }
            Button {
                objectName: "requestCancel"
                text: qsTrId("trivex-app-stop")
                onClicked: keyCard.token.cancel()
            }
        }
    }
    SavedRequestCard {
        id: savedCard
        path: page.savedPath
        Layout.fillWidth: true
        onStartOverAsked: page.startOverAsked()
    }
}
