// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// Shows for some seconds, without covering controls, that something succeeded, or that it has
/// ended otherwise; longer where it offers something to do.
Popup {
    id: toast
    property string text
    property bool isGood: true
    property string actionText
    signal action()
    objectName: "toast"
    parent: Overlay.overlay
    x: parent ? Math.round((parent.width - implicitWidth) / 2) : 0
    y: parent ? parent.height - implicitHeight - Theme.unit * 3 : 0
    /// The most that a line of text may take.
    readonly property real room: Math.min(560, parent
        ? parent.width - Theme.unit * 5 - padding * 2 - Theme.iconSize
            - (button.visible ? button.width + Theme.unit : 0) : 560)
    modal: false
    focus: false
    closePolicy: Popup.NoAutoClose
    padding: Theme.unit * 1.5
    function show(message, offer) {
        isGood = true
        present(message, offer)
    }
    function note(message) {
        isGood = false
        present(message)
    }
    function present(message, offer) {
        text = message
        actionText = offer || ""
        open()
        timer.restart()
    }
    background: Rectangle {
        radius: Theme.radius
        color: toast.isGood ? Theme.goodSoft : Theme.neutralSoft
        border.color: toast.isGood ? Theme.good : Theme.neutral
    }
    // Of sizes that follow from the text alone: a layout's would depend on where it lies.
    contentItem: Item {
        implicitWidth: icon.width + Theme.unit + label.width
            + (button.visible ? Theme.unit + button.width : 0)
        implicitHeight: Math.max(icon.height, label.height, button.visible ? button.height : 0)
        Icon {
            id: icon
            name: toast.isGood ? "check" : "info"
            color: toast.isGood ? Theme.good : Theme.neutral
            anchors.verticalCenter: parent.verticalCenter
        }
        Label {
            textFormat: Text.PlainText
            id: label
            objectName: "toastText"
            x: icon.width + Theme.unit
            width: Math.min(implicitWidth, toast.room)
            text: toast.text
            wrapMode: Text.WordWrap
            anchors.verticalCenter: parent.verticalCenter
            Accessible.role: Accessible.AlertMessage
        }
        Button {
            id: button
            objectName: "toastAction"
            x: label.x + label.width + Theme.unit
            width: implicitWidth
            height: implicitHeight
            text: toast.actionText
            visible: text.length > 0
            // It goes by itself, and would take the keys with it.
            focusPolicy: Qt.NoFocus
            anchors.verticalCenter: parent.verticalCenter
            onClicked: {
                toast.close()
                toast.action()
            }
        }
    }
    Timer {
        id: timer
        interval: toast.actionText ? 20000 : 6000
        onTriggered: toast.close()
    }
}
