// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15

/// The pages of the window, one of them shown: the list of a category, a token or the requests, and
/// those that are made when they are looked at. A new page goes in here with its key.
Item {
    id: pages
    property Library library
    property int columns: 3
    /// The key of the page: a category, "token:<store>", "requests", "newRequest" or "sign".
    property string current
    property alias listPage: listPage
    property alias sortKey: listPage.sortKey
    property alias descending: listPage.descending
    /// The shown page is at work, and no other may take its place.
    readonly property bool working: signing.item ? signing.item.working : false
    readonly property bool makingRequest: requestPage.item ? requestPage.item.busy : false
    /// It has a key and a name, and is not made.
    readonly property bool requestFilled: requestPage.item ? requestPage.item.filled : false
    readonly property bool exporting: listPage.exporting
    signal menuAsked()
    /// Another page is wanted.
    signal asked(string key)
    signal importAsked()
    signal removeAsked(var what)
    signal editAsked(string identity)
    signal factsAsked(string storeId)
    signal told(string text)
    signal failed(string cause, string advice)
    /// A page that was at work has ended.
    signal ended()

    /// The keys go where one types next.
    function focusFirst() {
        const page = listPage.visible ? listPage : signing.item || requestPage.item
        if (page)
            page.focusFirst()
    }
    function openDocument(path) {
        asked("sign")
        signing.item.open(path)
    }
    function signWith(entryId) {
        asked("sign")
        if (entryId)
            signing.item.selectEntry(entryId)
    }
    /// A new request for a key that is there.
    function requestFor(storeId, keyId, name) {
        asked("newRequest")
        requestPage.useKey(storeId, keyId, name)
    }
    function stop() {
        if (requestPage.item)
            requestPage.item.stop()
    }
    /// An operation on a token has ended, well or not.
    function operationEnded() { requestPage.generationEnded() }

    ListPage {
        id: listPage
        objectName: "listPage"
        anchors.fill: parent
        focus: true
        visible: !signing.active && !requestPage.visible
        library: pages.library
        columns: pages.columns
        key: visible ? pages.current : key
        onMenuAsked: pages.menuAsked()
        onImportAsked: pages.importAsked()
        onNewRequestAsked: pages.asked("newRequest")
        onRemoveAsked: pages.removeAsked(what)
        onSignAsked: pages.signWith(entryId)
        onEditAsked: pages.editAsked(identity)
        onTold: pages.told(text)
        onFactsAsked: pages.factsAsked(storeId)
        onRequestAsked: pages.requestFor(storeId, keyId, name)
        onCopied: pages.told(qsTrId("trivex-app-copied"))
        onExported: pages.told(qsTrId("trivex-app-exported").arg(path))
        onFailed: pages.failed(cause, advice)
    }
    Loader {
        id: signing
        anchors.fill: parent
        active: pages.current === "sign"
        focus: active
        sourceComponent: Component {
            SignPage {
                objectName: "signPage"
                columns: pages.columns
                library: pages.library
                onMenuAsked: pages.menuAsked()
                onTold: pages.told(text)
                onFailed: pages.failed(cause, advice)
                onWorkingChanged: if (!working) pages.ended()
            }
        }
    }
    NewRequestLoader {
        id: requestPage
        anchors.fill: parent
        shown: pages.current === "newRequest"
        columns: pages.columns
        onMenuAsked: pages.menuAsked()
        onFailed: pages.failed(cause, advice)
        onSavedUnseen: pages.told(qsTrId("trivex-app-saved"))
        onTold: pages.told(text)
    }
}
