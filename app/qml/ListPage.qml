// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// One category, one token or the requests: a search box over a list, details beside it or, in a
/// narrow window, instead of it.
Item {
    id: page
    property Library library
    property string key
    property int columns: 3
    readonly property var category: library.category(key)
    readonly property bool isRequests: key === "requests"
    readonly property string storeId: key.indexOf("token:") === 0 ? key.slice(6) : ""
    readonly property string title: category ? category.title
        : isRequests ? qsTrId("trivex-app-category-requests") : tokenInfo.name
    /// The details of the chosen row are open, where there is no place for them beside the list.
    property bool opened: false
    readonly property bool showsDetails: canGoBack
        || columns > 1 && (list.count > 0 || search.text.length > 0)
    readonly property bool canGoBack: columns === 1 && opened
        && (selection.certificate !== null || selection.isKey)
    property alias selection: selection
    property alias sortKey: rows.sortKey
    property alias descending: rows.descending
    readonly property alias exporting: actions.exporting
    signal menuAsked()
    signal importAsked()
    signal newRequestAsked()
    signal removeAsked(var what)
    /// With the key of an entry, or without one.
    signal signAsked(string entryId)
    signal editAsked(string identity)
    signal requestAsked(string storeId, string keyId, string name)
    signal factsAsked(string storeId)
    signal exported(string path)
    signal copied()
    signal told(string text)
    signal failed(string cause, string advice)

    function openAt(place) {
        opened = true
        shield.guard(place)
    }
    function goBack() {
        opened = false
        list.focusQuietly()
    }
    function focusSearch() {
        opened = false
        search.focusField()
    }
    function focusFirst() {
        list.focusQuietly()
    }
    function reset() {
        places.leaveFor(key)
        filters.leaveFor(key)
        search.text = ""
        opened = false
        selection.clear()
    }
    // The keys go where they went when what had them is there no more.
    onShowsDetailsChanged: if (!showsDetails && visible) list.focusQuietly()
    Keys.onEscapePressed: list.focusQuietly()
    onKeyChanged: reset()
    ScrollPlaces {
        id: places
        rows: rows
        view: list.listView
    }

    CertificateModel {
        id: requestFilter
        filterRole: KeyStoreModel.Request
        sourceModel: page.library.requestEntries
    }
    SectionedModel {
        id: rows
        entries: page.isRequests ? page.library.requestEntries : page.library.entries
        filter: page.category ? page.category.filter : page.isRequests ? requestFilter : null
        sortKey: SectionedModel.SortByName
        keys: page.library.tokenKeys
        storeId: page.storeId
        pattern: search.text
    }
    ReadyFilters {
        id: filters
        rows: rows
        tokens: page.library.tokens
    }
    RowSelection {
        id: selection
        rows: rows
    }
    RowActions {
        id: actions
        selection: selection
        pane: pane
        onRemoveAsked: page.removeAsked(what)
        onSignAsked: page.signAsked(entryId)
        onEditAsked: page.editAsked(identity)
        onRequestAsked: page.requestAsked(storeId, keyId, name)
        onExported: page.exported(path)
        onCopied: page.copied()
        onTold: page.told(text)
        onFailed: page.failed(cause, advice)
    }
    RowFiles {
        id: rowFiles
        onRefused: page.failed(qsTrId("trivex-app-drag-refused"), why)
    }
    RowMenu {
        id: rowMenu
        actions: actions
        onOpenAsked: list.enter()
        onAllAsked: selection.chooseAll()
    }
    TokenInfo {
        id: tokenInfo
        storeId: page.storeId
    }

    RowLayout {
        id: row
        // A line that spans a wide screen is hard to follow: what is left lies on both sides, until
        // there is enough for the details to stand in two columns.
        readonly property bool wide: page.width > Theme.fontSize * 180
        width: Math.min(page.width, Theme.fontSize * (wide ? 232 : 144))
        height: page.height
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: Theme.unit * 1.75
        ColumnLayout {
            visible: !page.canGoBack
            spacing: Theme.unit * 1.25
            Layout.fillWidth: true
            Layout.fillHeight: true
            ListHeader {
                page: page
                onFactsAsked: page.factsAsked(page.storeId)
                Layout.fillWidth: true
            }
            SearchBar {
                id: search
                rows: rows
                filters: filters
                isRequests: page.isRequests
                offersTokens: !page.storeId
                Layout.fillWidth: true
                onLeft: list.forceActiveFocus(Qt.TabFocusReason)
            }
            SelectionBar {
                actions: actions
                Layout.fillWidth: true
            }
            ListNotices {
                filters: filters
                counts: !page.isRequests && page.key !== "system" && !search.text
                token: tokenInfo
                ownFiles: page.key === "users"
                onCopied: page.copied()
                Layout.fillWidth: true
            }
            Item {
                Layout.fillWidth: true
                Layout.fillHeight: true
                CertificateList {
                    id: list
                    anchors.fill: parent
                    focus: true
                    model: rows
                    sections: page.storeId ? rows.hasKeys : !page.isRequests
                    pattern: search.text
                    selection: selection
                    // Where the details take the list's place, by arrow one looks around.
                    onPicked: page.opened = page.columns > 1
                    onActivated: page.openAt(lastClick)
                    onEntered: Qt.callLater(pane.focusFirst)
                    onRemoveAsked: actions.remove()
                    onCopyAsked: actions.copy()
                    onMenuAsked: rowMenu.popup(list, x, y)
                    onTyped: search.add(text)
                    dragUrls: function() { return rowFiles.write(rows.entries, actions.identities()) }
                }
                EmptyList {
                    anchors.fill: parent
                    library: page.library
                    onTold: page.told(text)
                    onFailed: page.failed(cause, advice)
                    visible: list.count === 0
                    category: page.category
                    isRequests: page.isRequests
                    pattern: search.text
                    filters: filters
                    searching: rows.entries.describing
                    tokens: page.library.tokens
                    onOpenAsked: page.signAsked("")
                    onClearAsked: search.text = ""
                    onNewRequestAsked: page.newRequestAsked()
                    onImportAsked: page.importAsked()
                }
            }
        }
        ColumnLayout {
            visible: page.showsDetails
            spacing: Theme.unit * 1.25
            // Long values need the greater half, and the actions over them stand side by side in it.
            Layout.fillWidth: page.columns === 1
            Layout.fillHeight: true
            Layout.preferredWidth: row.wide ? row.width - Theme.fontSize * 69
                : Math.min(Theme.fontSize * 74, row.width * (page.columns > 2 ? 0.53 : 0.5))
            PageHeader {
                visible: page.canGoBack
                backVisible: true
                title: page.title
                onBackAsked: page.goBack()
                Layout.fillWidth: true
            }
            CertificateDetailsPane {
                id: pane
                objectName: "detailsPane"
                offered: list.count > 0
                selection: selection
                Layout.fillWidth: true
                Layout.fillHeight: true
                onKeysLost: list.focusQuietly()
            }
        }
    }
    ClickShield {
        id: shield
        anchors.fill: parent
        visible: page.canGoBack
    }
}
