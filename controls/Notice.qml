// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// A line of advice in a coloured box. `level`: 0 plain, 1 good, 2 warning, 3 failure.
Rectangle {
    id: notice
    /// 0 plain, 1 good, 2 warning, 3 failure.
    property int level: 0
    /// What there is to say, in a few words.
    property string text
    /// More of it, in sentences.
    property string detail
    /// The text of a button; there is none while it is empty.
    property string actionText
    /// The button was pressed.
    signal action()
    // internal
    readonly property var grounds: [Theme.neutralSoft, Theme.goodSoft, Theme.warnSoft, Theme.badSoft]
    // internal
    readonly property var inks: [Theme.neutral, Theme.good, Theme.warn, Theme.bad]
    // internal
    readonly property var icons: ["info", "check", "warning", "error"]
    /// The button is below the text, which would have no room beside it.
    readonly property bool stacked: button.visible
        && holder.width < button.implicitWidth + Theme.fontSize * 17
    implicitWidth: 300
    implicitHeight: holder.implicitHeight + Theme.unit * 2.5
    visible: text.length > 0
    radius: Theme.radius
    color: grounds[level]
    Accessible.role: Accessible.AlertMessage
    Accessible.name: detail ? text + " " + detail : text
    // A positioner, so that the height is worked out when the scene is polished: see FillColumn.
    Column {
        id: holder
        x: Theme.unit * 1.5
        y: Theme.unit * 1.25
        width: notice.width - Theme.unit * 3
        spacing: Theme.unit
        RowLayout {
            width: holder.width
            spacing: Theme.unit * 1.25
            Icon {
                name: notice.icons[notice.level]
                color: notice.inks[notice.level]
                Layout.alignment: Qt.AlignTop
            }
            ColumnLayout {
                Layout.fillWidth: true
                spacing: 2
                Label {
                    textFormat: Text.PlainText
                    text: notice.text
                    color: Theme.text
                    font.bold: notice.detail.length > 0
                    wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                    Layout.fillWidth: true
                    Accessible.ignored: true
                }
                Label {
                    textFormat: Text.PlainText
                    text: notice.detail
                    visible: text.length > 0
                    color: Theme.text
                    wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                    Layout.fillWidth: true
                    Accessible.ignored: true
                }
            }
            Item {
                visible: button.visible && !notice.stacked
                implicitWidth: button.width
                implicitHeight: button.height
                Layout.alignment: Qt.AlignTop
            }
        }
        Item {
            visible: button.visible && notice.stacked
            width: holder.width
            height: button.height
        }
    }
    Button {
        id: button
        objectName: notice.objectName ? notice.objectName + "Action" : ""
        text: notice.actionText
        visible: text.length > 0
        width: Math.min(implicitWidth, holder.width)
        x: notice.width - width - holder.x
        y: notice.stacked ? notice.height - height - holder.y : holder.y
        onClicked: notice.action()
    }
}
