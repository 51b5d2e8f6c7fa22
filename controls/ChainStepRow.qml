// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// One certificate of a path: whose it is, where it lies, and what is wrong with it. The further it
/// is from the checked one, the further it stands in.
ItemDelegate {
    id: row
    /// Whose certificate it is.
    property string name
    /// Where it lies; empty where that is not known.
    property string place
    /// The verdict in a word.
    property string word
    /// What was found out about it, a sentence for each thing; empty where all is well.
    property string finding
    /// It is a root that is trusted here.
    property bool trusted: false
    /// A `CertificateChain.Verdict`.
    property int verdict: CertificateChain.Good
    /// The validity whose colours it has.
    property int shade: Validity.Unknown
    /// How far it is from the certificate that is checked: 0 for that one.
    property int depth: 0
    /// Its place, and that it is a trusted root, in a line.
    readonly property string about: [trusted ? qsTrId("trivex-app-chain-trusted-root") : "", place]
        .filter(function(part) { return part.length > 0 }).join(" · ")

    text: name
    focusPolicy: Qt.StrongFocus
    activeFocusOnTab: true
    leftPadding: Theme.unit * (1 + 2 * Math.min(depth, 4))
    Accessible.role: Accessible.ListItem
    Accessible.name: [name, word, about, finding].filter(function(part) { return part }).join(", ")
    Accessible.description: enabled ? qsTrId("trivex-app-chain-show-step") : ""
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: RowLayout {
        spacing: Theme.unit
        Icon {
            name: ["check", "warning", "info", "error"][row.verdict]
            color: Theme.stateColor(row.shade)
            Layout.alignment: Qt.AlignTop
        }
        ColumnLayout {
            spacing: 2
            Layout.fillWidth: true
            Label {
                textFormat: Text.PlainText
                text: row.name
                color: Theme.text
                wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                Layout.fillWidth: true
                Accessible.ignored: true
            }
            Label {
                textFormat: Text.PlainText
                text: row.about
                visible: text.length > 0
                color: Theme.textDim
                font.pixelSize: Theme.smallSize
                wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                Layout.fillWidth: true
                Accessible.ignored: true
            }
            Label {
                objectName: "chainFinding"
                textFormat: Text.PlainText
                text: row.finding
                visible: text.length > 0
                color: Theme.stateColor(row.shade)
                font.pixelSize: Theme.smallSize
                wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                Layout.fillWidth: true
                Accessible.ignored: true
            }
        }
    }
    background: Rectangle {
        radius: Theme.radius
        color: row.down ? Theme.pressed : row.hovered && row.enabled ? Theme.hover : Theme.card
        border.width: row.visualFocus ? Theme.focusWidth : 0
        border.color: Theme.link
    }
}
