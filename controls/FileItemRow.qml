// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// One thing in a file, with its tick and a way to all that is in it.
Item {
    id: row
    /// What it is called.
    property string name
    /// What it is, in a few words.
    property string detail
    /// The letter of its mark.
    property string letter
    /// When a certificate becomes valid, a date; else undefined.
    property var from
    /// When a certificate ends, a date; else undefined.
    property var until
    /// It can be ticked.
    property bool checkable: false
    /// Keeps the place of a tick, where others in the list have one.
    property bool indented: false
    /// It is ticked.
    property bool checked: false
    /// Its private key is in the file too.
    property bool withKey: false
    /// The keyboard is at this row.
    property bool current: false
    /// The tick was set or taken.
    signal toggled(bool checked)
    /// It is to be shown in full.
    signal viewAsked()
    /// A `Validity.State`.
    readonly property int validity: until && !isNaN(until) ? Validity.state(from, until)
                                                           : Validity.Unknown
    implicitHeight: line.implicitHeight + Theme.unit

    Accessible.role: Accessible.ListItem
    Accessible.name: [row.name, row.detail].join(", ")
    Rectangle {
        anchors.fill: parent
        color: "transparent"
        radius: Theme.radius
        border.width: Theme.focusWidth
        border.color: Theme.link
        visible: row.current
    }
    RowLayout {
        id: line
        anchors.left: parent.left
        anchors.right: parent.right
        // The frame of the row that has the keys lies around all of it.
        anchors.margins: Theme.unit * 0.5
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.unit

        CheckBox {
            objectName: "itemTick"
            visible: row.checkable || row.indented
            enabled: row.checkable
            opacity: row.checkable ? 1 : 0
            Accessible.ignored: !row.checkable
            checked: row.checked
            padding: 0
            focusPolicy: Qt.NoFocus
            Accessible.name: [row.name, row.detail].join(", ")
            onToggled: row.toggled(checked)
        }
        Avatar {
            letter: row.letter
            validity: row.validity
        }
        ColumnLayout {
            spacing: 2
            Layout.fillWidth: true
            Label {
                objectName: "itemName"
                textFormat: Text.PlainText
                text: row.name
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
            Label {
                textFormat: Text.PlainText
                text: row.withKey ? qsTrId("trivex-app-item-with-key").arg(row.detail) : row.detail
                color: Theme.textDim
                font.pixelSize: Theme.smallSize
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
        }
        Badge {
            visible: row.width > Theme.fontSize * 26
            validity: row.validity
        }
        ToolButton {
            objectName: "itemView"
            text: qsTrId("trivex-app-view")
            icon.source: Theme.icon("eye")
            display: AbstractButton.IconOnly
            focusPolicy: Qt.NoFocus
            Accessible.name: text + ": " + row.name
            onClicked: row.viewAsked()
        }
    }
}
