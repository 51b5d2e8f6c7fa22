// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Name, validity and the actions of a certificate, above its details.
Card {
    id: header
    /// Whose certificate it is.
    property string name
    /// When it becomes valid, a date; undefined for a request.
    property var from
    /// When it ends, a date; undefined for a request.
    property var until
    /// A `Validity.State`, for the mark and the badge.
    property int validity: Validity.Unknown
    /// Where it lies: the name of a token or a store.
    property string place
    /// Offers "Export".
    property bool canExport: true
    /// Offers "Remove".
    property bool canRemove: false
    /// Offers to sign a document with its key.
    property bool canSign: false
    /// Offers to edit it, which saved requests can be.
    property bool canEdit: false
    /// Its token is at work, so that nothing that changes it is offered.
    property bool busy: false
    /// Something to know before acting; nothing when empty.
    property string note
    /// "Export" was pressed.
    signal exportAsked()
    /// "Remove" was pressed.
    signal removeAsked()
    /// The button to sign a document was pressed.
    signal signAsked()
    /// "Edit" was pressed.
    signal editAsked()
    /// Everything that is shown is wanted on the clipboard.
    signal copyAsked()

    Label {
        textFormat: Text.PlainText
        text: header.name
        font.pixelSize: Theme.titleSize
        font.bold: true
        wrapMode: Text.WrapAtWordBoundaryOrAnywhere
        Layout.fillWidth: true
        Accessible.role: Accessible.Heading
    }
    Flow {
        spacing: Theme.unit
        Layout.fillWidth: true
        Badge {
            validity: header.validity
        }
        Label {
            textFormat: Text.PlainText
            text: header.until ? Validity.until(header.until) : ""
            color: Theme.textDim
            visible: text.length > 0
        }
        Label {
            textFormat: Text.PlainText
            text: header.place ? "· " + header.place : ""
            color: Theme.textDim
            visible: text.length > 0
            Accessible.name: header.place
        }
    }
    Label {
        textFormat: Text.PlainText
        objectName: "keyNote"
        text: header.note
        color: Theme.textDim
        wrapMode: Text.WordWrap
        visible: text.length > 0
        Layout.fillWidth: true
    }
    // Not the style's: that of Imagine needs an effects module that its package does not install.
    Rectangle {
        readonly property real elapsed: header.from && header.until
            ? Math.max(0, Math.min(1, Validity.elapsed(header.from, header.until))) : 0
        height: 6
        radius: 3
        color: Theme.neutralSoft
        visible: header.validity !== Validity.Unknown
        Layout.fillWidth: true
        Accessible.role: Accessible.ProgressBar
        Accessible.name: qsTrId("trivex-app-validity-elapsed") + ": "
                         + Math.round(elapsed * 100) + " %"
        Rectangle {
            width: parent.width * parent.elapsed
            height: parent.height
            radius: parent.radius
            color: Theme.good
        }
    }
    Flow {
        spacing: Theme.unit
        Layout.fillWidth: true
        Layout.topMargin: Theme.unit
        Button {
            objectName: "signButton"
            text: qsTrId("trivex-app-sign-action")
            icon.source: Theme.icon("sign")
            visible: header.canSign
            onClicked: header.signAsked()
        }
        Button {
            objectName: "editButton"
            text: qsTrId("trivex-app-edit")
            icon.source: Theme.icon("edit")
            visible: header.canEdit
            onClicked: header.editAsked()
        }
        Button {
            objectName: "exportButton"
            text: qsTrId("trivex-app-export")
            icon.source: Theme.icon("export")
            visible: header.canExport
            onClicked: header.exportAsked()
        }
        Button {
            objectName: "removeButton"
            text: qsTrId("trivex-app-remove")
            icon.source: Theme.icon("trash")
            flat: true
            enabled: !header.busy
            visible: header.canRemove
            onClicked: header.removeAsked()
        }
        ToolButton {
            objectName: "copyButton"
            text: qsTrId("trivex-app-copy-all")
            icon.source: Theme.icon("copy")
            // Keeps the actions in one line, in Russian too.
            display: AbstractButton.IconOnly
            onClicked: header.copyAsked()
        }
    }
}
