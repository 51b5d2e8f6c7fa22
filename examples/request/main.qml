// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

// Makes a key pair on a token and a certificate request for it, which an authority takes as a file.
ApplicationWindow {
    id: window
    property string outcome
    property bool busy: false
    visible: true
    width: 480
    height: 640
    title: "A certificate request"
    onOutcomeChanged: console.log(outcome)

    CertificateRequest {
        id: request
        keyStoreModel: KeyStoreModel
        keyIdentifier: "key of " + commonName.text // names the key on the token
        Component.onCompleted: init()
        onCreateKeyPairDone: {
            setCommonName(commonName.text)
            setOrganization(organization.text)
            setCountryCode(country.text)
            createRequest()
        }
        onRequestCreated: {
            window.busy = false
            window.outcome = "saved " + requestPath() + fileName
        }
    }
    // The request itself says nothing of a failure; this tells why the token refused.
    TokenErrors {
        onFailed: {
            window.busy = false
            window.outcome = cause + " " + advice
        }
    }

    ColumnLayout {
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 16 }
        enabled: !window.busy
        TextField { id: commonName; objectName: "commonName"; placeholderText: "Name"; Layout.fillWidth: true }
        TextField { id: organization; placeholderText: "Organization"; Layout.fillWidth: true }
        TextField { id: country; placeholderText: "Country, two letters"; maximumLength: 2; Layout.fillWidth: true }
        TokenChooser { id: token; objectName: "token"; locations: KeyStoreModel.certLocation; Layout.fillWidth: true }
        TextField { id: pin; objectName: "pin"; placeholderText: "PIN"; echoMode: TextInput.Password; Layout.fillWidth: true }
        Button {
            objectName: "make"
            text: "Make the key and the request"
            enabled: commonName.text && pin.text && token.usable
            onClicked: {
                window.busy = true
                window.outcome = ""
                request.prKeyLocationIndex = token.location
                request.prKeyAlgorithmId = CertificateRequest.RSA2048
                request.prKeyPin = pin.text
                pin.clear()
                request.createKeyPair() // returns at once; the token may take a minute
            }
        }
        BusyIndicator { running: window.busy }
        Label { text: window.outcome; textFormat: Text.PlainText; wrapMode: Text.Wrap; Layout.fillWidth: true }
    }
}
