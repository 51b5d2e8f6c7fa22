// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// The document to be signed or checked: dropped or chosen, with its name, type, size, digest and,
/// for a picture, a preview.
Card {
    id: card
    property SignedDocument document
    readonly property bool ready: document.ready
    signal chooseAsked()
    function focusFirst() {
        chooseButton.forceActiveFocus(Qt.OtherFocusReason)
    }

    title: qsTrId("trivex-app-step-document")

    Rectangle {
        visible: !card.ready
        Layout.fillWidth: true
        implicitHeight: hint.implicitHeight + Theme.unit * 4
        radius: Theme.radius
        color: "transparent"
        border.color: Theme.fieldBorder
        FillColumn {
            id: hint
            anchors.centerIn: parent
            width: parent.width - Theme.unit * 4
            spacing: Theme.unit
            Label {
                textFormat: Text.PlainText
                text: qsTrId("trivex-app-drop-document")
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.WordWrap
                Layout.fillWidth: true
            }
            Button {
                id: chooseButton
                objectName: "chooseDocument"
                text: qsTrId("trivex-app-choose-file")
                icon.source: Theme.icon("file")
                anchors.horizontalCenter: parent.horizontalCenter
                onClicked: card.chooseAsked()
            }
        }
    }
    Notice {
        objectName: "documentProblem"
        level: 3
        text: card.document.problem
        Layout.fillWidth: true
    }
    RowLayout {
        visible: card.ready
        spacing: Theme.unit * 2
        Layout.fillWidth: true
        Rectangle {
            id: frame
            readonly property bool picture: card.ready && card.document.mimeType.indexOf("image/") === 0
            visible: picture && card.width > Theme.fontSize * 26
            width: Theme.fontSize * 9
            height: width
            radius: Theme.radius
            color: Theme.neutralSoft
            Layout.alignment: Qt.AlignTop
            Image {
                id: preview
                objectName: "documentPreview"
                anchors.fill: parent
                anchors.margins: 4
                asynchronous: true
                cache: false
                fillMode: Image.PreserveAspectFit
                sourceSize: Qt.size(width, height)
                source: frame.picture ? Files.url(card.document.path) : ""
                // The same name may hold another picture now.
                Connections {
                    target: card.document
                    function onStampChanged() {
                        preview.source = ""
                        preview.source = Qt.binding(function() {
                            return frame.picture ? Files.url(card.document.path) : ""
                        })
                    }
                }
                Accessible.role: Accessible.Graphic
                Accessible.name: qsTrId("trivex-app-preview")
            }
        }
        ColumnLayout {
            spacing: Theme.unit
            Layout.fillWidth: true
            DetailRow {
                objectName: "documentName"
                label: qsTrId("trivex-app-file-name")
                value: card.document.fileName
                Layout.fillWidth: true
            }
            DetailRow {
                objectName: "documentType"
                label: qsTrId("trivex-app-file-type")
                value: card.document.mimeType
                Layout.fillWidth: true
            }
            DetailRow {
                objectName: "documentSize"
                label: qsTrId("trivex-app-file-size")
                value: Texts.size(card.document.fileSize)
                Layout.fillWidth: true
            }
            DetailRow {
                objectName: "documentDigest"
                // Whoever signs a message reads the document itself, however long it is.
                label: card.document.raw ? qsTrId("trivex-app-file-digest")
                    : qsTrId("trivex-app-file-folder")
                value: card.document.raw ? card.document.digest : Files.folder(card.document.path)
                fixedWidth: card.document.raw
                Layout.fillWidth: true
            }
            Button {
                text: qsTrId("trivex-app-choose-other")
                flat: true
                Layout.maximumWidth: card.width - Theme.unit * 5
                Layout.leftMargin: -leftPadding
                onClicked: card.chooseAsked()
            }
        }
    }
}
