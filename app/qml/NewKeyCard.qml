// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// The key of a new request: its token, kind and name, and how it is made.
Card {
    id: card
    property CertificateRequest request
    /// Has no room for two fields side by side.
    property bool narrow: false
    property bool generating: false
    property bool made: false
    /// The algorithms are there, in their order.
    property bool prepared: false
    /// The token that makes the key.
    readonly property alias token: chooser.info
    readonly property bool startable: !generating && chooser.usable && !chooser.info.locked
        && keyName.text.trim().length > 0 && pin.text.length > 0 && algorithm.currentIndex >= 0
        && (!chooser.info.lastTry || consent.checked)
    signal failed(string cause, string advice)

    title: qsTrId("trivex-app-step-key")
    enabled: !made

    function focusFirst() {
        keyName.field.forceActiveFocus(Qt.OtherFocusReason)
    }
    /// Shows the algorithms of the request, which are there by now.
    function prepare() {
        prepared = true
        // RSA where there is a choice: other keys can't sign files here.
        algorithm.currentIndex = Math.max(algorithm.indexOfValue(CertificateRequest.RSA2048), 0)
    }
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
    /// The key is there.
    function finish() {
        // In this order, so that the page is never without a reason to stay.
        made = true
        generating = false
    }

    // A token that goes back to rest without a word has failed all the same.
    Timer {
        interval: 4000
        running: card.generating && !chooser.info.busy
        onTriggered: {
            card.generating = false
            card.failed(qsTrId("trivex-app-generate-failed"), qsTrId("trivex-app-advice-pin"))
        }
    }
    GridLayout {
        columns: card.narrow ? 1 : 2
        columnSpacing: Theme.unit * 1.5
        rowSpacing: Theme.unit * 1.25
        enabled: !card.generating
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
                textFormat: Text.PlainText
                text: qsTrId("trivex-app-algorithm")
                color: Theme.textDim
                font.pixelSize: Theme.smallSize
            }
            ComboBox {
                id: algorithm
                objectName: "algorithmChooser"
                // Sorted by the request's init(), which the rows tell nobody.
                model: card.prepared ? card.request.prKeyAlgorithm : null
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
            field.onAccepted: pin.forceActiveFocus(Qt.TabFocusReason)
            Layout.fillWidth: true
            Layout.alignment: Qt.AlignTop
        }
        ColumnLayout {
            spacing: 3
            Layout.fillWidth: true
            Layout.preferredWidth: 100
            Layout.alignment: Qt.AlignTop
            Label {
                textFormat: Text.PlainText
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
                onAccepted: card.generate()
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
        visible: !card.made
        spacing: Theme.unit
        Layout.fillWidth: true
        Layout.topMargin: Theme.unit
        Button {
            objectName: "generateButton"
            text: qsTrId("trivex-app-generate")
            icon.source: Theme.icon("key")
            highlighted: true
            enabled: card.startable
            visible: !card.generating
            onClicked: card.generate()
        }
        ColumnLayout {
            visible: card.generating
            Layout.fillWidth: true
            Label {
                textFormat: Text.PlainText
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
            visible: card.generating
            onClicked: chooser.info.cancel()
        }
    }
    Notice {
        level: 1
        text: card.made ? qsTrId("trivex-app-generated").arg(chooser.tokenName) : ""
        Layout.fillWidth: true
    }
}
