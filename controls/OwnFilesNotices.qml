// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// What it means to import the ticked items into one's own files: keys stay behind, and roots are
/// trusted from then on.
FillColumn {
    id: notices
    /// What the file holds; its ticks decide what is said.
    property FileItemModel items
    /// Whether one's own files are where the items go.
    property bool chosen: false
    /// There is something to look at: the items go to one's own files.
    readonly property bool counts: chosen && items !== null
    visible: (withoutKey.text + roots.text).length > 0
    spacing: Theme.unit * 1.5

    Notice {
        id: withoutKey
        objectName: "importWithoutKey"
        level: 0
        text: notices.counts && notices.items.checkedKeys > 0
            ? qsTrId("trivex-app-import-without-key") : ""
        Layout.fillWidth: true
    }
    Notice {
        id: roots
        objectName: "importRoots"
        level: 2
        text: notices.counts && notices.items.checkedRoots > 0
            ? qsTrId("trivex-app-import-roots", notices.items.checkedRoots) : ""
        Layout.fillWidth: true
    }
}
