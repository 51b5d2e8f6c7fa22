// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// What is to be known of a list before its rows: which filters are on, what ends soon, how its
/// token is.
ColumnLayout {
    id: notices
    property ReadyFilters filters
    property TokenInfo token
    /// Whether those that end soon are to be counted.
    property bool counts: false
    /// Whether the list is that of the user's own files.
    property bool ownFiles: false
    signal copied()
    readonly property int expiring: counts && !filters.active && filters.rows.count > 0
        ? filters.rows.countWithValidity(Validity.Expiring) : 0
    spacing: Theme.unit * 1.25
    // A text decides: what is in an invisible item is never visible.
    visible: [filterNotice, expiringNotice, tokenNotice, keysNotice, listsNotice].some(function(one) { return one.text })

    Notice {
        id: filterNotice
        objectName: "filterNotice"
        text: notices.filters.active
            ? Texts.put(qsTrId("trivex-app-filtered"), [notices.filters.words]) : ""
        actionText: qsTrId("trivex-app-filter-lift")
        onAction: notices.filters.rows.liftFilters()
        Layout.fillWidth: true
    }
    Notice {
        id: expiringNotice
        objectName: "expiringNotice"
        level: 2
        text: notices.expiring > 0 ? qsTrId("trivex-app-expiring", notices.expiring) : ""
        actionText: qsTrId("trivex-app-expiring-show")
        onAction: notices.filters.toggleValidity(Validity.Expiring)
        Layout.fillWidth: true
    }
    Notice {
        id: tokenNotice
        objectName: "tokenNotice"
        text: notices.token.storeId && !notices.token.present
            ? qsTrId("trivex-app-token-removed-text") : notices.token.pinText
        level: notices.token.locked || notices.token.lastTry ? 3 : 2
        Layout.fillWidth: true
    }
    Notice {
        id: keysNotice
        objectName: "keysNotice"
        text: notices.token.keysHidden ? qsTrId("trivex-app-keys-hidden") : ""
        actionText: work.running || notices.token.locked ? "" : qsTrId("trivex-app-keys-show")
        onAction: work.show(notices.token.storeId)
        Layout.fillWidth: true
    }
    Notice {
        id: listsNotice
        objectName: "listsNotice"
        text: notices.ownFiles && lists.lists.count > 0
            ? qsTrId("trivex-app-lists-count", lists.lists.count) : ""
        actionText: qsTrId("trivex-app-lists-show")
        onAction: lists.open()
        Layout.fillWidth: true
    }
    RevocationListsDialog {
        id: lists
        onCopied: notices.copied()
    }
    TokenKeyWork {
        id: work
    }
}
