// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// Shown in place of an empty list, with the next step if there is one.
Item {
    id: empty
    /// The name of one of the module's icons.
    property string icon
    /// What is missing, in a few words.
    property string title
    /// Why, or what to do about it, in a sentence.
    property string text
    /// The text of the button; there is none while it is empty.
    property string actionText
    /// Another step, for those who can't take the first one.
    property string secondText
    /// The step that is meant, where there are several.
    property bool isFirst: false
    /// Further steps, below the first.
    default property alias further: steps.data
    /// The button was pressed.
    signal action()
    /// The button of `secondText` was pressed.
    signal second()
    implicitHeight: column.implicitHeight
    // A window may be lower than all of it.
    FormPage {
        id: page
        anchors.fill: parent
        maximumWidth: Math.min(empty.width - Theme.unit * 4, 420)
        endSpace: 0
        Item {
            implicitHeight: Math.max(column.implicitHeight, page.height)
            Layout.fillWidth: true
            Column {
                id: column
                anchors.centerIn: parent
                width: parent.width
                spacing: Theme.unit * 1.25
                Icon {
                    name: empty.icon
                    size: Theme.iconSize * 2.4
                    anchors.horizontalCenter: parent.horizontalCenter
                }
                Label {
                    textFormat: Text.PlainText
                    width: parent.width
                    text: empty.title
                    font.pixelSize: Theme.headingSize
                    font.bold: true
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.WordWrap
                }
                Label {
                    textFormat: Text.PlainText
                    width: parent.width
                    text: empty.text
                    visible: text.length > 0
                    color: Theme.textDim
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.WordWrap
                }
                Button {
                    anchors.horizontalCenter: parent.horizontalCenter
                    objectName: "emptyAction"
                    text: empty.actionText
                    visible: text.length > 0
                    highlighted: empty.isFirst
                    onClicked: empty.action()
                }
                Button {
                    anchors.horizontalCenter: parent.horizontalCenter
                    objectName: "emptySecond"
                    text: empty.secondText
                    visible: text.length > 0
                    highlighted: true
                    onClicked: empty.second()
                }
                Column {
                    id: steps
                    anchors.horizontalCenter: parent.horizontalCenter
                    spacing: Theme.unit
                }
            }
        }
    }
}
