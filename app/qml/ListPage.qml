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
    readonly property bool canGoBack: columns === 1 && opened && selection.certificate !== null
    property alias pane: pane
    property alias selection: selection
    property alias list: list
    property alias search: search
    property alias rows: rows
    signal menuAsked()
    signal importAsked()
    signal newRequestAsked()
    signal removeAsked(var what)
    signal signAsked(string entryId)
    signal editAsked(string identity)
    signal exported(string path)
    signal copied()
    signal failed(string cause, string advice)

    function goBack() {
        opened = false
        list.forceActiveFocus(Qt.OtherFocusReason)
    }
    function focusSearch() {
        opened = false
        search.forceActiveFocus(Qt.ShortcutFocusReason)
        search.selectAll()
    }
    function reset() {
        search.text = ""
        opened = false
        selection.clear()
    }
    property CertificateModel lastFilter
    onKeyChanged: reset()

    CertificateModel {
        id: requestFilter
        searchRoles: page.library.searchRoles
        filterRole: KeyStoreModel.Request
        sourceModel: page.library.requestEntries
    }
    SectionedModel {
        id: rows
        readonly property CertificateModel chosen: page.category ? page.category.filter
            : page.isRequests ? requestFilter : null
        entries: page.isRequests ? page.library.requestEntries : page.library.entries
        filter: chosen
        storeId: page.storeId
        pattern: page.storeId ? search.text : ""
        onChosenChanged: {
            if (page.lastFilter)
                page.lastFilter.pattern = ""
            page.lastFilter = chosen
        }
        onCountChanged: page.updateNotice()
    }
    RowSelection {
        id: selection
        rows: rows
    }
    TokenInfo {
        id: tokenInfo
        storeId: page.storeId
    }
    function updateNotice() {
        notice.expiring = key === "personal" && !search.text
            ? rows.countWithValidity(Validity.Expiring) : 0
    }

    RowLayout {
        anchors.fill: parent
        spacing: Theme.unit * 1.75
        ColumnLayout {
            visible: !page.canGoBack
            spacing: Theme.unit * 1.25
            Layout.fillWidth: true
            Layout.fillHeight: true
            PageHeader {
                title: page.title
                menuVisible: page.columns < 3
                onMenuAsked: page.menuAsked()
                Layout.fillWidth: true
                Button {
                    objectName: "importButton"
                    text: qsTrId("trivex-app-import")
                    icon.source: Theme.icon("import")
                    highlighted: true
                    visible: !page.isRequests
                    onClicked: page.importAsked()
                }
                Button {
                    objectName: "newRequestButton"
                    text: qsTrId("trivex-app-new-request")
                    icon.source: Theme.icon("plus")
                    highlighted: true
                    visible: page.isRequests
                    onClicked: page.newRequestAsked()
                }
            }
            SearchField {
                id: search
                objectName: "searchField"
                Layout.fillWidth: true
                onTextChanged: {
                    if (rows.chosen)
                        rows.chosen.pattern = text
                    page.updateNotice()
                }
                Keys.onDownPressed: list.forceActiveFocus(Qt.TabFocusReason)
                onAccepted: list.forceActiveFocus(Qt.TabFocusReason)
            }
            Notice {
                id: notice
                property int expiring: 0
                level: 2
                text: expiring > 0 ? qsTrId("trivex-app-expiring", expiring) : ""
                Layout.fillWidth: true
            }
            Notice {
                text: page.storeId && !tokenInfo.present
                    ? qsTrId("trivex-app-token-removed-text") : tokenInfo.pinText
                level: tokenInfo.locked || tokenInfo.lastTry ? 3 : 2
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
                    sections: !page.storeId && !page.isRequests
                    pattern: search.text
                    selection: selection
                    // Where the details take the list's place, by arrow one looks around.
                    onPicked: page.opened = page.columns > 1
                    onActivated: page.opened = true
                }
                EmptyState {
                    anchors.fill: parent
                    visible: list.count === 0
                    icon: search.text ? "search" : page.category ? page.category.icon : "request"
                    title: search.text ? qsTrId("trivex-app-not-found")
                        : KeyStoreModel.isBusy ? qsTrId("trivex-app-loading")
                        : qsTrId("trivex-app-empty")
                    text: search.text ? qsTrId("trivex-app-not-found-text")
                        : page.category ? page.category.about
                        : page.isRequests ? qsTrId("trivex-app-about-requests")
                        : qsTrId("trivex-app-about-token")
                    // What would fill the list; a system's own certificates nobody adds here.
                    actionText: search.text ? qsTrId("trivex-app-clear-search")
                        : page.isRequests ? qsTrId("trivex-app-new-request")
                        : page.key === "system" ? "" : qsTrId("trivex-app-import")
                    onAction: search.text ? search.clear()
                        : page.isRequests ? page.newRequestAsked() : page.importAsked()
                }
            }
        }
        ColumnLayout {
            visible: page.showsDetails
            spacing: Theme.unit * 1.25
            // Long values need the greater half, and the actions over them stand side by side in it.
            Layout.fillWidth: page.columns === 1
            Layout.fillHeight: true
            Layout.preferredWidth: page.width * (page.columns > 2 ? 0.53 : 0.5)
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
                certificate: selection.certificate
                entryId: selection.entryId
                place: selection.place
                storeType: selection.type
                hasKey: selection.hasKey
                canSign: selection.keyKind === EntryModel.RsaKind
                Layout.fillWidth: true
                Layout.fillHeight: true
                onRemoveAsked: page.removeAsked({ identity: selection.identity, entryId: entryId,
                    name: Texts.plain(certificate.commonName || certificate.fileName), place: place,
                    hasKey: hasKey, isRequest: isRequest })
                onSignAsked: page.signAsked(entryId)
                onEditAsked: page.editAsked(selection.identity)
                onExported: page.exported(path)
                onCopied: page.copied()
                onFailed: page.failed(cause, advice)
            }
        }
    }
}
