// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Says of an empty list what belongs there, and offers what fills it.
EmptyState {
    id: empty
    property var category: null
    property bool isRequests: false
    property string pattern
    property ReadyFilters filters
    /// What is shown of the rows is being put into words still.
    property bool searching: false
    readonly property bool filtered: filters.active && filters.rows.hiddenCount > 0
    property Library library
    signal told(string text)
    signal failed(string cause, string advice)
    signal clearAsked()
    signal newRequestAsked()
    signal importAsked()
    signal openAsked()
    /// Nobody has put anything of his own here yet.
    readonly property bool isStart: !filtered && !pattern && category !== null
        && category.key === "personal" && !KeyStoreModel.isBusy
    property TokenListModel tokens
    // internal: a token that was taken out keeps its row.
    property int looks: 0
    readonly property Connections tokenChanges: Connections {
        target: empty.tokens
        function onDataChanged() { ++empty.looks }
    }
    /// The name of the first token on which a key can be made; empty without one.
    readonly property string token: {
        for (let row = 0; tokens && looks >= 0 && row < tokens.count; ++row) {
            if (Rows.value(tokens, row, "takesKeys"))
                return Rows.value(tokens, row, "name")
        }
        return ""
    }

    icon: filtered ? "filter" : pattern ? "search" : category ? category.icon : "request"
    title: KeyStoreModel.isBusy ? qsTrId("trivex-app-loading")
        : filtered ? qsTrId("trivex-app-filter-hides", filters.rows.hiddenCount)
        : pattern && searching ? qsTrId("trivex-app-searching")
        : pattern ? qsTrId("trivex-app-not-found")
        : isStart ? qsTrId("trivex-app-start-title") : qsTrId("trivex-app-empty")
    text: filtered ? Texts.put(qsTrId("trivex-app-filtered"), [filters.words])
        : pattern ? qsTrId("trivex-app-not-found-text")
        : isStart && token ? Texts.put(qsTrId("trivex-app-start-token"), [token])
        : isStart ? qsTrId("trivex-app-start-no-token")
        : category ? category.about
        : isRequests ? qsTrId("trivex-app-about-requests") : qsTrId("trivex-app-about-token")
    // What would fill the list; a system's own certificates nobody adds here.
    actionText: filtered ? qsTrId("trivex-app-filter-lift")
        : pattern ? qsTrId("trivex-app-clear-search")
        : isRequests || isStart && token ? qsTrId("trivex-app-new-request")
        : category && category.key === "system" ? "" : qsTrId("trivex-app-import")
    // Without a token there is no place for a key.
    secondText: category && category.key === "personal" && !pattern && !filtered && maker.available
        && !KeyStoreModel.isBusy && !token ? qsTrId("trivex-app-new-token") : ""
    onSecond: {
        making.active = true
        making.item.open()
    }
    TokenMaker { id: maker }
    Loader {
        id: making
        objectName: "newTokenLoader"
        active: false
        sourceComponent: NewTokenDialog {
            maker: maker
            onDone: empty.told(Texts.put(qsTrId("trivex-app-new-token-made"), [name]))
            onFailed: empty.failed(cause, advice)
        }
    }
    isFirst: isStart && token.length > 0
    onAction: filtered ? filters.rows.liftFilters() : pattern ? clearAsked()
        : isRequests || isStart && token ? newRequestAsked() : importAsked()

    Button {
        objectName: "startImport"
        visible: empty.isStart && empty.token.length > 0
        text: qsTrId("trivex-app-import")
        anchors.horizontalCenter: parent.horizontalCenter
        onClicked: empty.importAsked()
    }
    Button {
        objectName: "startOpen"
        visible: empty.isStart
        text: qsTrId("trivex-app-open-file")
        anchors.horizontalCenter: parent.horizontalCenter
        onClicked: empty.openAsked()
    }
}
