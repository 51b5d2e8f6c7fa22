// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import Trivex.Crypto.Controls 1.0

/// What can be done with the file of an import, and with those that wait behind it.
DialogButtons {
    id: buttons
    /// Files that are asked about after this one.
    property int waiting: 0
    /// There is something to import.
    property bool ready: false
    signal cancelled() ///< this file is not wanted
    signal accepted() ///< what is ticked in this file is wanted
    signal restLeft() ///< none of those that wait is wanted; this one stays
    // The first one has the keys where the file can't be read: Enter goes on to the next file.
    Button {
        objectName: "importCancel"
        text: qsTrId("trivex-app-cancel")
        onClicked: buttons.cancelled()
    }
    Button {
        objectName: "importLeaveRest"
        text: qsTrId("trivex-app-import-leave-rest").arg(buttons.waiting)
        visible: buttons.waiting > 0
        onClicked: buttons.restLeft()
    }
    Button {
        objectName: "importAccept"
        text: qsTrId("trivex-app-import-accept")
        highlighted: true
        enabled: buttons.ready
        onClicked: buttons.accepted()
    }
}
