// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// One order of a list; an arrow marks the current one and says which way it goes.
ActionItem {
    id: item
    property SectionedModel rows
    property int key
    readonly property bool current: rows.sortKey === key
    icon.source: current ? Theme.icon(rows.descending ? "down" : "up") : ""
    leftPadding: horizontalPadding + (current ? 0 : Theme.iconSize + spacing)
    Accessible.name: !current ? text : text + ", " + (rows.descending
        ? qsTrId("trivex-app-sort-descending") : qsTrId("trivex-app-sort-ascending"))
    onTriggered: {
        rows.descending = current && !rows.descending
        rows.sortKey = key
    }
}
