// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import Trivex.Crypto.Controls 1.0

/// A ready filter in the menu; a tick says that it is in force.
MenuItem {
    property bool on: false
    icon.source: on ? Theme.icon("check") : ""
    leftPadding: horizontalPadding + (on ? 0 : Theme.iconSize + spacing)
    Accessible.checkable: true
    Accessible.checked: on
    Accessible.name: on ? text + ", " + qsTrId("trivex-app-filter-on") : text
}
