// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Trivex.Crypto.Controls 1.0

T.TextField {
    id: control

    implicitWidth: Math.max(200, implicitBackgroundWidth + leftInset + rightInset)
    implicitHeight: Theme.controlHeight
    leftPadding: Theme.unit * 1.5
    rightPadding: Theme.unit * 1.5
    verticalAlignment: TextInput.AlignVCenter
    font.pixelSize: Theme.fontSize
    color: Theme.text
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentText
    placeholderTextColor: Theme.textDim
    selectByMouse: true
    opacity: enabled ? 1 : 0.6

    Accessible.role: Accessible.EditableText
    Accessible.name: placeholderText
    Accessible.editable: !readOnly

    PlaceholderText {
        textFormat: Text.PlainText
        x: control.leftPadding
        width: control.width - control.leftPadding - control.rightPadding
        height: control.height
        text: control.placeholderText
        font: control.font
        color: control.placeholderTextColor
        verticalAlignment: control.verticalAlignment
        elide: Text.ElideRight
        visible: !control.length && !control.preeditText
    }

    Keys.forwardTo: textMenu
    TextMenu {
        id: textMenu
    }

    background: Rectangle {
        radius: Theme.radius
        color: Theme.field
        border.width: control.activeFocus ? Theme.focusWidth : 1
        border.color: control.activeFocus ? Theme.link : Theme.fieldBorder
    }
}
