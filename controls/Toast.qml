// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// Shows for some seconds that something succeeded, or that it has ended otherwise; longer where it
/// offers something to do. One that offers nothing lets presses through to what it lies over.
Popup {
    id: toast
    /// What is said.
    property string text
    /// It succeeded; false where it has ended otherwise.
    property bool isGood: true
    /// What can be done about it; there is no button while it is empty.
    property string actionText
    /// The button was pressed.
    signal action()
    objectName: "toast"
    parent: Overlay.overlay
    x: parent ? Math.round((parent.width - implicitWidth) / 2) : 0
    y: parent ? parent.height - implicitHeight - Theme.unit * 3 : 0
    /// The most that a line of text may take without a button, and beside it.
    readonly property real wholeRoom: parent
        ? parent.width - Theme.unit * 5 - padding * 2 - Theme.iconSize : 560
    // internal
    readonly property real roomBeside: wholeRoom - button.width - Theme.unit
    /// The button is below the text: beside it there is no room for a word.
    readonly property bool stacked: button.visible
        && roomBeside < Math.min(label.implicitWidth, Theme.fontSize * 10)
    // internal
    readonly property real room: Math.min(560, button.visible && !stacked ? roomBeside : wholeRoom)
    modal: false
    focus: false
    enabled: actionText.length > 0
    closePolicy: Popup.NoAutoClose
    padding: Theme.unit * 1.5
    /// Says that something succeeded, with an offer to do something about it where one is given.
    function show(message, offer) {
        isGood = true
        present(message, offer)
    }
    /// Says that something has ended otherwise.
    function note(message) {
        isGood = false
        present(message)
    }
    // internal
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
        id: content
        readonly property real textWidth: icon.width + Theme.unit + label.width
        readonly property real besideHeight: button.visible && !toast.stacked ? button.height : 0
        readonly property real lineHeight: Math.max(icon.height, label.height, besideHeight)
        implicitWidth: !button.visible ? textWidth
            : toast.stacked ? Math.max(textWidth, button.width)
            : textWidth + Theme.unit + button.width
        implicitHeight: lineHeight + (toast.stacked ? Theme.unit + button.height : 0)
        Icon {
            id: icon
            name: toast.isGood ? "check" : "info"
            color: toast.isGood ? Theme.good : Theme.neutral
            y: (content.lineHeight - height) / 2
        }
        Label {
            textFormat: Text.PlainText
            id: label
            objectName: "toastText"
            x: icon.width + Theme.unit
            width: Math.min(implicitWidth, toast.room)
            text: toast.text
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            y: (content.lineHeight - height) / 2
            Accessible.role: Accessible.AlertMessage
        }
        Button {
            id: button
            objectName: "toastAction"
            x: toast.stacked ? content.width - width : label.x + label.width + Theme.unit
            y: toast.stacked ? content.lineHeight + Theme.unit : (content.lineHeight - height) / 2
            width: implicitWidth
            height: implicitHeight
            text: toast.actionText
            visible: text.length > 0
            // It goes by itself, and would take the keys with it.
            focusPolicy: Qt.NoFocus
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
