// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Trivex.Crypto.Controls 1.0

T.CheckBox {
    id: control
    /// Some of what it stands for is chosen.
    readonly property bool partial: checkState === Qt.PartiallyChecked

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(Theme.controlHeight, implicitContentHeight + topPadding + bottomPadding)
    padding: Theme.unit * 0.5
    spacing: Theme.unit
    font.pixelSize: Theme.fontSize
    opacity: enabled ? 1 : 0.55

    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checked: checked
    Accessible.checkStateMixed: partial
    // By itself it only turns the tick, and nobody hears of it.
    function press() {
        toggle()
        toggled()
        clicked()
    }
    Keys.onReturnPressed: press()
    Keys.onEnterPressed: press()

    indicator: Rectangle {
        x: control.leftPadding
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.iconSize
        height: width
        radius: 5
        color: control.checked || control.partial ? Theme.accent : Theme.field
        border.width: control.checked || control.partial ? 0 : 1
        border.color: Theme.fieldBorder
        ColorImage {
            anchors.fill: parent
            anchors.margins: 2
            source: Theme.icon("check")
            sourceSize: Qt.size(width, height)
            color: Theme.accentText
            visible: control.checked
        }
        Rectangle {
            anchors.centerIn: parent
            width: parent.width * 0.5
            height: 2
            color: Theme.accentText
            visible: control.partial
        }
        FocusFrame { of: control }
    }

    contentItem: Text {
        textFormat: Text.PlainText
        leftPadding: control.indicator.width + control.spacing
        text: control.text
        font: control.font
        color: Theme.text
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WordWrap
    }
}
