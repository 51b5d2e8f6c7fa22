// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// The details of a key without a certificate, with what can be done with it. `groups` is what
/// `TokenKeyInfo` gives; made of plain maps in the gallery.
FormPage {
    id: view
    /// The label of the key.
    property string name
    /// The label of its token.
    property string place
    /// What is known of it.
    property var groups: []
    /// The name of the request that waits for the key's certificate; empty where none does.
    property string request
    /// Offers to make a request for it.
    property bool canRequest: false
    /// Offers to remove it.
    property bool canRemove: false
    /// Its token is at work, so that nothing that changes it is offered.
    property bool busy: false
    /// A request for this key is wanted.
    signal requestAsked()
    /// The key is to be removed.
    signal removeAsked()
    /// Everything that is shown is wanted on the clipboard.
    signal copyAsked()
    endSpace: Theme.unit * 3
    Accessible.name: qsTrId("trivex-app-details")

    Card {
        Layout.fillWidth: true
        Label {
            textFormat: Text.PlainText
            text: view.name
            font.pixelSize: Theme.titleSize
            font.bold: true
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            Layout.fillWidth: true
            Accessible.role: Accessible.Heading
        }
        Label {
            textFormat: Text.PlainText
            text: [qsTrId("trivex-app-key-bare"), view.place]
                .filter(function(part) { return part }).join(" · ")
            color: Theme.textDim
            wrapMode: Text.WordWrap
            Layout.fillWidth: true
        }
        Notice {
            objectName: "keyRequestNotice"
            text: view.request
                ? Texts.put(qsTrId("trivex-app-key-waits"), [view.request])
                : view.canRequest ? "" : qsTrId("trivex-app-key-no-request")
            Layout.fillWidth: true
        }
        Flow {
            spacing: Theme.unit
            Layout.fillWidth: true
            Layout.topMargin: Theme.unit
            Button {
                objectName: "keyRequestButton"
                text: qsTrId("trivex-app-key-make-request")
                icon.source: Theme.icon("request")
                visible: view.canRequest
                onClicked: view.requestAsked()
            }
            Button {
                objectName: "removeKeyButton"
                text: qsTrId("trivex-app-remove")
                icon.source: Theme.icon("trash")
                flat: true
                enabled: !view.busy
                visible: view.canRemove
                onClicked: view.removeAsked()
            }
            ToolButton {
                objectName: "copyKeyButton"
                text: qsTrId("trivex-app-copy-all")
                icon.source: Theme.icon("copy")
                display: AbstractButton.IconOnly
                onClicked: view.copyAsked()
            }
        }
    }
    DetailGroups {
        groups: view.groups
        Layout.fillWidth: true
    }
}
