// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
// First: it decides which tokens are remembered, and the other one looks for the providers.
import Trivex.Crypto.Tools 1.0
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0

import Qt.labs.settings 1.0

/// What works with certificates in the window: the models, the pages over their place, the dialogs,
/// the keys and the files that come in.
Item {
    id: work
    property ApplicationWindow window
    /// Where the pages lie.
    property Item place
    property alias library: models
    property alias listPage: pages.listPage
    /// The page that has the keys from the beginning.
    readonly property string firstPage: "personal"

    function openFiles(files) { queue.add(files) }
    function showSettings() { dialogs.showSettings() }
    function showManual() { dialogs.showManual() }
    function chooseImport() { dialogs.chooseImport() }
    /// Another page is about to be shown; it is.
    function leave() { drawer.close() }
    function arrive() { Qt.callLater(pages.focusFirst) }
    /// False while somebody is asked about what would be lost.
    function mayClose() { return dialogs.mayClose(underWay.lines()) }
    function requestEnded() {
        dialogs.operationEnded()
        pages.operationEnded()
    }

    Settings {
        property alias sortKey: pages.sortKey
        property alias sortDescending: pages.descending
    }
    Library {
        id: models
    }
    Connections {
        target: models.errors
        function onFailed() {
            work.requestEnded()
            // The page that signs says it where the result is looked for.
            if (!pages.working)
                dialogs.fail(models.errors.cause, models.errors.advice, models.errors.report)
        }
        function onLeft() { work.requestEnded() }
    }
    Connections {
        target: models.watcher
        function onArrived(name) {
            dialogs.tell(Texts.put(qsTrId("trivex-app-arrived"), [name]))
        }
    }
    Connections {
        target: KeyStoreModel
        function onEntryRemovedChanged(success) {
            if (success)
                dialogs.tellRemoved()
        }
    }
    WorkUnderWay {
        id: underWay
        library: models
        pages: pages
        dialogs: dialogs
    }
    FileQueue {
        id: queue
        documentsFirst: work.window.current === "sign"
        // Until a signature is made its page has no place for another document.
        isBlocked: function() { return dialogs.importing || pages.working }
        onImportable: dialogs.startImport(path)
        onDocument: {
            dialogs.expectNoImport()
            pages.openDocument(path)
        }
        onLeftOut: {
            dialogs.expectNoImport()
            dialogs.tell(qsTrId("trivex-app-one-document"))
        }
        onSlow: dialogs.expectImport(path)
    }
    WindowShortcuts {
        listPage: pages.listPage
        onOpenAsked: dialogs.chooseImport()
        onNewAsked: work.window.show("newRequest")
        onUndoAsked: dialogs.undoRemoval()
        onHelpAsked: dialogs.showManual()
        onQuitAsked: work.window.close()
    }

    WindowPages {
        id: pages
        x: work.place.x
        y: work.place.y
        width: work.place.width
        height: Math.min(work.place.height, dialogs.noticeTop - y - Theme.unit)
        library: models
        columns: work.window.columns
        current: work.window.current
        onAsked: work.window.show(key)
        onMenuAsked: drawer.open()
        onImportAsked: dialogs.chooseImport()
        onRemoveAsked: dialogs.askRemoval(what)
        onEditAsked: dialogs.editRequest(identity)
        onFactsAsked: dialogs.showTokenFacts(storeId)
        onTold: dialogs.tell(text)
        onFailed: dialogs.fail(cause, advice)
        onEnded: queue.next()
    }
    Drawer {
        id: drawer
        objectName: "drawer"
        width: Math.min(drawerBar.implicitWidth, work.width - 48)
        height: work.height
        interactive: work.window.columns < 3
        Sidebar {
            id: drawerBar
            anchors.fill: parent
            library: models
            current: work.window.current
            onChosen: work.window.show(key)
            onSettingsAsked: dialogs.showSettings()
            onHelpAsked: dialogs.showManual()
        }
    }
    DropArea {
        anchors.fill: parent
        keys: ["text/uri-list"]
        onDropped: {
            // Rows of this window, let go too early.
            if (drop.source !== null)
                return
            const files = []
            for (const url of drop.urls)
                files.push(Files.path(url))
            drop.accept(Qt.CopyAction)
            work.openFiles(files.filter(function(path) { return path }))
        }
    }
    WindowDialogs {
        id: dialogs
        manual: work.window.manual
        anchors.fill: parent
        library: models
        selection: pages.listPage.selection
        onAboutToShow: drawer.close()
        onFilesAsked: work.openFiles(paths)
        waitingFiles: queue.waiting.length
        onRestLeft: queue.leaveRest()
        onImportEnded: Qt.callLater(queue.next)
        onExpectationLeft: queue.leave()
        onCloseAsked: {
            underWay.stop()
            work.window.close()
        }
    }
}
