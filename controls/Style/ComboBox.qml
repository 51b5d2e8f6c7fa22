// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Window 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Trivex.Crypto.Controls 1.0

T.ComboBox {
    id: control

    implicitWidth: Math.max(200, implicitContentWidth + leftPadding + rightPadding)
    // A second line, where a narrow window leaves the chosen one no room.
    implicitHeight: Math.max(Theme.controlHeight, contentItem.implicitHeight + Theme.unit * 1.5)
    leftPadding: Theme.unit * 1.5
    rightPadding: Theme.unit * 1.5 + Theme.iconSize
    font.pixelSize: Theme.fontSize
    opacity: enabled ? 1 : 0.55

    Accessible.role: Accessible.ComboBox
    Accessible.name: displayText

    // It has a use for Enter only while its list is open, and keeps it always: a dialog would never
    // get it.
    Keys.onReturnPressed: event.accepted = passOn()
    Keys.onEnterPressed: event.accepted = passOn()
    function passOn() {
        for (let item = popup.visible ? null : parent; item; item = item.parent) {
            if (item.acceptDefault !== undefined) {
                item.acceptDefault()
                return true
            }
        }
        return false
    }

    delegate: ItemDelegate {
        width: ListView.view ? ListView.view.width : implicitWidth
        text: control.textRole
            ? (Array.isArray(control.model) ? modelData[control.textRole] : model[control.textRole])
            : modelData
        highlighted: control.highlightedIndex === index
        hoverEnabled: control.hoverEnabled
    }

    indicator: ColorImage {
        x: control.width - width - Theme.unit * 1.25
        y: (control.height - height) / 2
        width: Theme.iconSize * 0.8
        height: width
        sourceSize: Qt.size(width, height)
        source: Theme.icon("down")
        color: Theme.textDim
    }

    contentItem: Text {
        textFormat: Text.PlainText
        text: control.displayText
        font: control.font
        color: Theme.text
        elide: Text.ElideRight
        wrapMode: Text.WrapAtWordBoundaryOrAnywhere
        maximumLineCount: 2
        verticalAlignment: Text.AlignVCenter
    }

    background: Rectangle {
        radius: Theme.radius
        color: control.hovered ? Theme.hover : Theme.field
        border.width: control.activeFocus ? Theme.focusWidth : 1
        border.color: control.activeFocus ? Theme.link : Theme.fieldBorder
    }

    popup: T.Popup {
        y: control.height + 4
        width: control.width
        height: Math.min(contentItem.implicitHeight + 8, control.Window.height - 40)
        padding: 4
        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: control.delegateModel
            currentIndex: control.highlightedIndex
            Accessible.role: Accessible.List
            Accessible.name: control.Accessible.name
            ScrollBar.vertical: ScrollBar {}
        }
        background: Rectangle {
            radius: Theme.radius
            color: Theme.card
            border.color: Theme.border
        }
    }
}
