// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// All that is known of a token: who made it, its PIN, what is on it, what it can do. As high as its
/// content.
FillColumn {
    id: view
    /// The id of the token's key store.
    property alias storeId: facts.storeId
    /// The `TokenFactList` that is shown.
    readonly property alias facts: facts
    spacing: Theme.unit * 1.5
    Accessible.role: Accessible.Grouping
    Accessible.name: facts.name

    Notice {
        level: 2
        text: facts.storeId && !facts.present ? qsTrId("trivex-app-token-removed-text") : ""
        Layout.fillWidth: true
    }
    DetailGroups {
        groups: facts.groups
        Layout.fillWidth: true
    }
    TokenFactList {
        id: facts
    }
}
