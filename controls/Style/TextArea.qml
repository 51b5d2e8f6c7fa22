// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Trivex.Crypto.Controls 1.0

T.TextArea {
    id: control

    implicitWidth: Math.max(200, contentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(Theme.controlHeight * 2, contentHeight + topPadding + bottomPadding)
    padding: Theme.unit * 1.25
    font.pixelSize: Theme.fontSize
    color: Theme.text
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentText
    placeholderTextColor: Theme.textDim
    selectByMouse: true
    wrapMode: TextEdit.Wrap

    Accessible.role: Accessible.EditableText
    Accessible.name: placeholderText
    Accessible.multiLine: true
    Accessible.readOnly: readOnly

    background: Rectangle {
        radius: Theme.radius
        color: Theme.field
        border.width: control.activeFocus ? Theme.focusWidth : 1
        border.color: control.activeFocus ? Theme.link : Theme.fieldBorder
    }
}
