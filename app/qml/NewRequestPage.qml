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
    property bool generating: false
    property bool haveKey: false
    /// The algorithms are there, in their order.
    property bool prepared: false
    property bool signing: false
    property bool explained: false
    /// A key that is being made, or has no request yet: the page is to stay.
    readonly property bool unfinished: generating || signing || haveKey && !savedPath
    property string savedPath
    readonly property bool startable: !generating && chooser.usable && !chooser.info.locked
        && keyName.text.trim().length > 0 && pin.text.length > 0 && algorithm.currentIndex >= 0
        && (!chooser.info.lastTry || consent.checked)
    signal menuAsked()
    signal failed(string cause, string advice)
    signal startOverAsked()

    maximumWidth: Theme.fontSize * 52
    Accessible.name: qsTrId("trivex-app-new-request")

    function generate() {
        if (!startable)
            return
        request.prKeyLocationIndex = chooser.location
        request.prKeyAlgorithmId = algorithm.currentValue
        request.keyIdentifier = keyName.text.trim()
        request.keyMarker = keyName.text.trim()
        request.prKeyPin = pin.text
        pin.clear()
        consent.checked = false
        generating = true
        request.createKeyPair()
    }
    /// The token's operation ended without a key or a request; why, the window says.
    function generationEnded() {
        generating = false
        explained = true
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
            page.prepared = true
            // RSA where there is a choice: other keys can't sign files here.
            algorithm.currentIndex =
                Math.max(algorithm.indexOfValue(CertificateRequest.RSA2048), 0)
        }
        onCreateKeyPairDone: {
            // In this order, so that the page is never without a reason to stay.
            page.haveKey = true
            page.generating = false
            form.forceActiveFocus(Qt.TabFocusReason)
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
    // A token that goes back to rest without a word has failed all the same.
    Timer {
        interval: 4000
        running: page.generating && !chooser.info.busy
        onTriggered: {
            page.generating = false
            page.failed(qsTrId("trivex-app-generate-failed"), qsTrId("trivex-app-advice-pin"))
        }
    }

    PageHeader {
        title: qsTrId("trivex-app-new-request")
        menuVisible: page.columns < 3
        onMenuAsked: page.menuAsked()
        Layout.fillWidth: true
    }
    Card {
        title: qsTrId("trivex-app-step-key")
        enabled: !page.haveKey
        Layout.fillWidth: true
        GridLayout {
            columns: page.width < Theme.fontSize * 36 ? 1 : 2
            columnSpacing: Theme.unit * 1.5
            rowSpacing: Theme.unit * 1.25
            enabled: !page.generating
            Layout.fillWidth: true
            TokenChooser {
                id: chooser
                locations: KeyStoreModel.certLocation
                Layout.fillWidth: true
                Layout.alignment: Qt.AlignTop
            }
            ColumnLayout {
                spacing: 3
                Layout.fillWidth: true
                Layout.preferredWidth: 100
                Layout.alignment: Qt.AlignTop
                Label {
                    text: qsTrId("trivex-app-algorithm")
                    color: Theme.textDim
                    font.pixelSize: Theme.smallSize
                }
                ComboBox {
                    id: algorithm
                    objectName: "algorithmChooser"
                    // Sorted by the request's init(), which the rows tell nobody.
                    model: page.prepared ? request.prKeyAlgorithm : null
                    textRole: "name"
                    valueRole: "id"
                    Accessible.name: qsTrId("trivex-app-algorithm") + ": " + currentText
                    Layout.fillWidth: true
                }
            }
            LabeledField {
                id: keyName
                objectName: "keyNameField"
                label: qsTrId("trivex-app-key-name")
                hint: qsTrId("trivex-app-key-name-hint")
                field.objectName: "keyNameInput"
                Layout.fillWidth: true
                Layout.alignment: Qt.AlignTop
            }
            ColumnLayout {
                spacing: 3
                Layout.fillWidth: true
                Layout.preferredWidth: 100
                Layout.alignment: Qt.AlignTop
                Label {
                    text: qsTrId("trivex-app-pin-of").arg(chooser.tokenName)
                    color: Theme.textDim
                    font.pixelSize: Theme.smallSize
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                PasswordField {
                    id: pin
                    objectName: "generatePin"
                    placeholderText: qsTrId("trivex-app-pin")
                    Accessible.name: qsTrId("trivex-app-pin-of").arg(chooser.tokenName)
                    Layout.fillWidth: true
                    onAccepted: page.generate()
                }
                CheckBox {
                    id: consent
                    objectName: "generateConsent"
                    text: qsTrId("trivex-app-pin-consent")
                    visible: chooser.info.lastTry
                    Layout.fillWidth: true
                }
            }
        }
        RowLayout {
            visible: !page.haveKey
            spacing: Theme.unit
            Layout.fillWidth: true
            Layout.topMargin: Theme.unit
            Button {
                objectName: "generateButton"
                text: qsTrId("trivex-app-generate")
                icon.source: Theme.icon("key")
                highlighted: true
                enabled: page.startable
                visible: !page.generating
                onClicked: page.generate()
            }
            ColumnLayout {
                visible: page.generating
                Layout.fillWidth: true
                Label {
                    text: qsTrId("trivex-app-generating")
                    Layout.fillWidth: true
                    wrapMode: Text.WordWrap
                    Accessible.role: Accessible.AlertMessage
                }
                ProgressBar {
                    indeterminate: true
                    Layout.fillWidth: true
                    Accessible.name: qsTrId("trivex-app-generating")
                }
            }
            Button {
                objectName: "generateCancel"
                text: qsTrId("trivex-app-stop")
                visible: page.generating
                onClicked: chooser.info.cancel()
            }
        }
        Notice {
            level: 1
            text: page.haveKey ? qsTrId("trivex-app-generated").arg(chooser.tokenName) : ""
            Layout.fillWidth: true
        }
    }
    Card {
        title: qsTrId("trivex-app-step-subject")
        opacity: page.haveKey ? 1 : 0.6
        Layout.fillWidth: true
        SubjectForm {
            id: form
            // A request of this kind has no place for them.
            identifiers: false
            enabled: page.haveKey && !page.savedPath && !page.signing
            Layout.fillWidth: true
        }
        Flow {
            visible: !page.signing
            spacing: Theme.unit
            Layout.fillWidth: true
            Layout.topMargin: Theme.unit
            Button {
                objectName: "createRequest"
                text: qsTrId("trivex-app-create-request")
                icon.source: Theme.icon("request")
                highlighted: true
                enabled: page.haveKey && form.complete && !page.savedPath && !page.signing
                onClicked: page.create()
            }
            Button {
                objectName: "leaveKey"
                text: qsTrId("trivex-app-another-request")
                flat: true
                visible: page.haveKey && !page.savedPath
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
                id: signingLabel
                text: qsTrId("trivex-app-busy-sign")
                Layout.fillWidth: true
                Accessible.role: Accessible.AlertMessage
            }
            Button {
                objectName: "requestCancel"
                text: qsTrId("trivex-app-stop")
                onClicked: chooser.info.cancel()
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
