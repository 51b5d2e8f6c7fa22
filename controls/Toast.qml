// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// Says for some seconds that something went well, without being in the way.
Popup {
    id: toast
    property string text
    objectName: "toast"
    parent: Overlay.overlay
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? parent.height - height - Theme.unit * 3 : 0
    width: Math.min(implicitWidth, parent ? parent.width - Theme.unit * 4 : implicitWidth)
    modal: false
    focus: false
    closePolicy: Popup.NoAutoClose
    padding: Theme.unit * 1.5
    function show(message) {
        text = message
        open()
        timer.restart()
    }
    background: Rectangle {
        radius: Theme.radius
        color: Theme.goodSoft
        border.color: Theme.good
    }
    contentItem: RowLayout {
        spacing: Theme.unit
        Icon {
            name: "check"
            color: Theme.good
        }
        Label {
            objectName: "toastText"
            text: toast.text
            wrapMode: Text.WordWrap
            Layout.fillWidth: true
            Layout.maximumWidth: 560
            Accessible.role: Accessible.AlertMessage
        }
    }
    Timer {
        id: timer
        interval: 6000
        onTriggered: toast.close()
    }
}
