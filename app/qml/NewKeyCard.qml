// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// The key of a new request: its token, kind and name, and how it is made; or one that is there.
Card {
    id: card
    property KeyRequest request
    /// Has no room for two fields side by side.
    property bool narrow: false
    property bool made: false
    readonly property bool generating: request.running && !made
    /// The token that makes the key.
    readonly property alias token: chooser.info
    /// Of a key that is there; empty for a new one.
    readonly property string keyId: keyChooser.currentIndex > 0 ? keyChooser.currentValue : ""
    readonly property bool startable: !generating && chooser.usable && !chooser.info.locked
        && !keyId && keyName.text.trim().length > 0 && pin.text.length > 0
        && algorithm.currentValue !== undefined
        && (!chooser.info.lastTry || consent.checked)
    signal started()

    title: qsTrId("trivex-app-step-key")
    enabled: !made

    function focusFirst() {
        keyName.field.forceActiveFocus(Qt.OtherFocusReason)
    }
    function take() {
        started()
        request.takeKey(chooser.storeId, keyId)
    }
    function generate() {
        if (!startable)
            return
        const typed = pin.text
        pin.clear()
        consent.checked = false
        started()
        request.prepareKey(chooser.storeId, algorithm.currentValue, keyName.text.trim(), typed)
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
            visible: keyChooser.count > 1
            Layout.fillWidth: true
            Layout.preferredWidth: 100
            Layout.alignment: Qt.AlignTop
            Label {
                textFormat: Text.PlainText
                text: qsTrId("trivex-app-key-choice")
                color: Theme.textDim
                font.pixelSize: Theme.smallSize
            }
            ComboBox {
                id: keyChooser
                objectName: "keyChooser"
                model: KeyChoiceModel {
                    storeId: chooser.storeId
                    onModelReset: keyChooser.currentIndex = 0
                }
                textRole: "title"
                valueRole: "keyId"
                delegate: PlainDelegate {
                    width: ListView.view ? ListView.view.width : implicitWidth
                    text: model.title
                    highlighted: keyChooser.highlightedIndex === index
                    hoverEnabled: keyChooser.hoverEnabled
                }
                Accessible.name: qsTrId("trivex-app-key-choice") + ": " + currentText
                Layout.fillWidth: true
            }
        }
        ColumnLayout {
            spacing: 3
            visible: !card.keyId
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
                /// The kind that was chosen: rows are others as soon as the token has told.
                property var kind: undefined
                function findAgain() {
                    currentIndex = count > 0 ? Math.max(0, indexOfValue(kind)) : -1
                }
                model: KeyKindModel {
                    storeId: chooser.storeId
                    onModelReset: Qt.callLater(algorithm.findAgain)
                }
                onActivated: kind = currentValue
                textRole: "title"
                valueRole: "kind"
                Accessible.name: qsTrId("trivex-app-algorithm") + ": " + currentText
                Layout.fillWidth: true
            }
        }
        LabeledField {
            id: keyName
            visible: !card.keyId
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
            visible: !card.keyId
            Layout.fillWidth: true
            Layout.preferredWidth: 100
            Layout.alignment: Qt.AlignTop
            Label {
                textFormat: Text.PlainText
                text: Texts.put(qsTrId("trivex-app-pin-of"), [chooser.tokenName])
                color: Theme.textDim
                font.pixelSize: Theme.smallSize
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
            PasswordField {
                id: pin
                objectName: "generatePin"
                placeholderText: qsTrId("trivex-app-pin")
                Accessible.name: Texts.put(qsTrId("trivex-app-pin-of"), [chooser.tokenName])
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
            visible: !card.generating && !card.keyId
            onClicked: card.generate()
        }
        Button {
            objectName: "takeKeyButton"
            text: qsTrId("trivex-app-take-key")
            icon.source: Theme.icon("key")
            highlighted: true
            enabled: chooser.info.present
            visible: !card.generating && card.keyId.length > 0
            onClicked: card.take()
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
            onClicked: card.request.cancel()
        }
    }
    Notice {
        level: 1
        text: card.made ? Texts.put(qsTrId("trivex-app-generated"), [chooser.tokenName]) : ""
        Layout.fillWidth: true
    }
}
