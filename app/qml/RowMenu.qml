// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import Trivex.Crypto.Controls 1.0

/// The menu of the chosen rows.
Menu {
    id: menu
    property RowActions actions
    /// Why the key of the row stays where it is, as it is known when the menu opens.
    property string keyReason
    signal openAsked()
    signal allAsked()

    objectName: "rowMenu"
    title: qsTrId("trivex-app-row-menu")
    onAboutToShow: keyReason = actions.whyKeyStays()

    ActionItem {
        objectName: "rowMenuOpen"
        text: qsTrId("trivex-app-show-details")
        icon.source: Theme.icon("info")
        shown: menu.actions.one
        onTriggered: menu.openAsked()
    }
    ActionItem {
        objectName: "rowMenuSign"
        text: qsTrId("trivex-app-sign-action")
        icon.source: Theme.icon("sign")
        shown: menu.actions.canSign
        onTriggered: menu.actions.sign()
    }
    ActionItem {
        objectName: "rowMenuEdit"
        text: qsTrId("trivex-app-edit")
        icon.source: Theme.icon("edit")
        shown: menu.actions.canEdit
        onTriggered: menu.actions.edit()
    }
    ActionItem {
        objectName: "rowMenuRequest"
        text: qsTrId("trivex-app-key-make-request")
        icon.source: Theme.icon("request")
        shown: menu.actions.canRequest
        onTriggered: menu.actions.request()
    }
    ActionItem {
        objectName: "rowMenuExport"
        text: qsTrId("trivex-app-export")
        icon.source: Theme.icon("export")
        shown: menu.actions.canExport
        onTriggered: menu.actions.exportRows()
    }
    ActionItem {
        objectName: "rowMenuExportKey"
        text: menu.keyReason ? qsTrId("trivex-app-export-key") + ". " + menu.keyReason
                             : qsTrId("trivex-app-export-key") + "…"
        icon.source: Theme.icon("key")
        shown: menu.actions.hasKey
        enabled: !menu.keyReason
        onTriggered: menu.actions.exportKey()
    }
    ActionItem {
        objectName: "rowMenuTogether"
        text: qsTrId("trivex-app-export-together")
        icon.source: Theme.icon("file")
        shown: menu.actions.count > 1
        onTriggered: menu.actions.exportTogether()
    }
    ActionItem {
        objectName: "rowMenuCopyPem"
        text: qsTrId("trivex-app-copy-pem")
        icon.source: Theme.icon("copy")
        shown: menu.actions.canExport
        onTriggered: menu.actions.copyPem()
    }
    ActionItem {
        objectName: "rowMenuCopy"
        text: qsTrId("trivex-app-copy-all")
        icon.source: Theme.icon("copy")
        onTriggered: menu.actions.copy()
    }
    ActionItem {
        objectName: "rowMenuRemove"
        text: qsTrId("trivex-app-remove")
        icon.source: Theme.icon("trash")
        shown: menu.actions.canRemove
        onTriggered: menu.actions.remove()
    }
    MenuSeparator {}
    ActionItem {
        objectName: "rowMenuAll"
        text: qsTrId("trivex-app-choose-all")
        icon.source: Theme.icon("check")
        onTriggered: menu.allAsked()
    }
}
