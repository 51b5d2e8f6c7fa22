// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Whom a request is for, and what the certificate is for: the fields of its profile, and behind a
/// button all that a request can have.
Card {
    id: card
    property KeyRequest request
    property bool signing: false
    property bool startable: false
    property bool leavable: false
    /// The rest is shown.
    property bool unfolded: false
    signal createAsked()
    signal leaveAsked()
    signal stopAsked()

    title: qsTrId("trivex-app-step-subject")

    function focusFirst() {
        names.focusFirst()
    }
    function check() {
        return names.check() && others.check()
    }

    RequestFields {
        id: names
        prefix: "name"
        numbered: true
        values: card.request.names
        addText: qsTrId("trivex-app-field-add")
        enabled: card.startable
        onAccepted: createButton.enabled && card.createAsked()
        Layout.fillWidth: true
    }
    Label {
        textFormat: Text.PlainText
        text: qsTrId("trivex-app-other-names")
        visible: others.visible
        wrapMode: Text.WordWrap
        Layout.fillWidth: true
        Layout.topMargin: Theme.unit
    }
    RequestFields {
        id: others
        prefix: "other"
        values: card.request.alternativeNames
        addText: qsTrId("trivex-app-other-names-add")
        enabled: card.startable
        visible: card.unfolded || card.request.alternativeNames.count > 0
        onAccepted: createButton.enabled && card.createAsked()
        Layout.fillWidth: true
    }
    Flow {
        Layout.fillWidth: true
        Button {
            objectName: "unfoldRequest"
            text: card.unfolded ? qsTrId("trivex-app-show-less") : qsTrId("trivex-app-show-more")
            icon.source: Theme.icon(card.unfolded ? "up" : "down")
            flat: true
            width: Math.min(implicitWidth, parent.width)
            onClicked: card.unfolded = !card.unfolded
        }
    }
    RequestUsages {
        request: card.request
        keyUsages: card.request.keyUsages
        purposes: card.request.purposes
        enabled: card.startable
        visible: card.unfolded
        onKeyUsagesEdited: card.request.keyUsages = chosen
        onPurposesEdited: card.request.purposes = chosen
        Layout.fillWidth: true
    }
    Flow {
        visible: !card.signing
        spacing: Theme.unit
        Layout.fillWidth: true
        Layout.topMargin: Theme.unit
        Button {
            id: createButton
            objectName: "createRequest"
            text: qsTrId("trivex-app-create-request")
            icon.source: Theme.icon("request")
            highlighted: true
            width: Math.min(implicitWidth, parent.width)
            enabled: card.startable && card.request.named && !card.signing
            onClicked: card.createAsked()
        }
        Button {
            objectName: "leaveKey"
            text: qsTrId("trivex-app-another-request")
            flat: true
            width: Math.min(implicitWidth, parent.width)
            visible: card.leavable
            onClicked: card.leaveAsked()
        }
    }
    RowLayout {
        objectName: "requestBusy"
        visible: card.signing
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
            onClicked: card.stopAsked()
        }
    }
}
