// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import Trivex.Crypto.Controls 1.0

/// What can be done with one value.
Menu {
    id: menu
    /// What the value is.
    property string label
    /// The whole value.
    property string value
    /// The part of it that is selected.
    property string part
    /// That text was put on the clipboard.
    signal copied(string text)

    objectName: "detailMenu"
    MenuItem {
        objectName: "detailCopy"
        text: menu.part.length > 0 ? qsTrId("trivex-app-copy-part")
                                   : qsTrId("trivex-app-copy-value")
        icon.source: Theme.icon("copy")
        onTriggered: menu.copied(menu.part.length > 0 ? menu.part : menu.value)
    }
    MenuItem {
        objectName: "detailCopyLabel"
        text: qsTrId("trivex-app-copy-with-label")
        enabled: menu.label.length > 0
        onTriggered: menu.copied(menu.label + ": " + menu.value)
    }
}
