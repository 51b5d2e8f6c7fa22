// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// One certificate or request in a list. The searched text is marked where it was found.
ItemDelegate {
    id: row
    /// Whose certificate it is.
    property string name
    /// Who issued it.
    property string issuer
    /// Where it lies; not shown while it is empty.
    property string place
    /// The letter of its mark.
    property string letter
    /// A `Validity.State`.
    property int validity: Validity.Unknown
    /// When it ends, a date; undefined for a request.
    property var until
    /// The text that is marked where it was found.
    property string pattern
    /// Shows that its private key is there.
    property bool hasKey: false
    /// A key without a certificate; `issuer` is its kind then.
    property bool isKey: false
    /// Only after the PIN is entered is it known whether there is a key.
    property bool keyPresumed: false
    /// What is said of a key that no login has shown yet.
    readonly property string keyNote: keyPresumed ? qsTrId("trivex-app-key-unseen") : ""
    /// The validity in a word.
    readonly property string state_: isKey ? "" : Validity.word(validity)

    implicitHeight: Theme.rowHeight
    horizontalPadding: Theme.unit * 1.5
    verticalPadding: 0
    text: name
    Accessible.name: [name, isKey ? qsTrId("trivex-app-key-bare") : "", issuer, keyNote, state_, until ? Validity.until(until) : "", place]
        .filter(function(part) { return part }).join(", ")
    Accessible.selected: highlighted
    Accessible.focusable: true

    contentItem: Item {
        Avatar {
            id: avatar
            letter: row.letter
            icon: row.isKey ? "key" : ""
            validity: row.validity
            anchors.verticalCenter: parent.verticalCenter
        }
        Column {
            anchors.left: avatar.right
            anchors.leftMargin: Theme.unit * 1.5
            anchors.right: state.left
            anchors.rightMargin: Theme.unit
            anchors.verticalCenter: parent.verticalCenter
            spacing: 3
            Text {
                width: parent.width
                text: row.pattern ? Texts.marked(row.name, row.pattern, Theme.link) : row.name
                textFormat: row.pattern ? Text.StyledText : Text.PlainText
                font.pixelSize: Theme.fontSize
                color: Theme.text
                elide: Text.ElideRight
                Accessible.ignored: true
            }
            Row {
                width: parent.width
                spacing: note.visible ? Theme.unit : 0
                Text {
                    textFormat: Text.PlainText
                    id: note
                    objectName: "rowKeyNote"
                    width: Math.min(implicitWidth, parent.width)
                    visible: text.length > 0
                    text: row.keyNote
                    font.pixelSize: Theme.smallSize
                    color: Theme.warn
                    elide: Text.ElideRight
                    Accessible.ignored: true
                }
                Text {
                    width: Math.max(0, parent.width - x)
                    text: row.pattern ? Texts.marked(row.issuer, row.pattern, Theme.link) : row.issuer
                    textFormat: row.pattern ? Text.StyledText : Text.PlainText
                    font.pixelSize: Theme.smallSize
                    color: Theme.textDim
                    elide: Text.ElideRight
                    Accessible.ignored: true
                }
            }
        }
        Column {
            id: state
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 4
            Badge {
                anchors.right: parent.right
                visible: !row.isKey
                validity: row.validity
                Accessible.ignored: true
            }
            Text {
                textFormat: Text.PlainText
                anchors.right: parent.right
                text: row.until ? Validity.date(row.until) : ""
                visible: text.length > 0
                font.pixelSize: Theme.smallSize
                color: Theme.textDim
                Accessible.ignored: true
            }
        }
    }
}
