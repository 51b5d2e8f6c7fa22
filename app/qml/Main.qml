// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import QtQuick.Window 2.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

import Qt.labs.settings 1.0

ApplicationWindow {
    id: window
    objectName: "mainWindow"
    width: 1180
    height: 760
    minimumWidth: 360
    minimumHeight: 420
    visible: true
    title: Qt.application.displayName

    /// The page that is shown, as `WindowPages` names it.
    property string current: "personal"
    /// The width in what text of a usual size would need: large text gets fewer columns.
    readonly property real room: width / Math.max(1, Theme.fontSize / 15)
    readonly property int columns: room >= 900 ? 3 : room >= 640 ? 2 : 1
    /// The manual in the user's language, which the program loads.
    property string manual
    property alias library: library
    property alias listPage: pages.listPage

    function openFiles(files) {
        queue.add(files)
    }
    function show(key) {
        drawer.close()
        current = key
        Qt.callLater(pages.focusFirst)
    }
    function requestEnded() {
        dialogs.operationEnded()
        pages.operationEnded()
    }

    Settings {
        property alias mode: themeMirror.mode
        property alias textScale: themeMirror.textScale
        property alias width: window.width
        property alias height: window.height
        property alias sortKey: pages.sortKey
        property alias sortDescending: pages.descending
    }
    ThemeMirror {
        id: themeMirror
        window: window
    }
    Library {
        id: library
    }
    Connections {
        target: library.errors
        function onFailed() {
            window.requestEnded()
            // The page that signs says it where the result is looked for.
            if (!pages.working)
                dialogs.fail(library.errors.cause, library.errors.advice, library.errors.report)
        }
        function onLeft() { window.requestEnded() }
    }
    Connections {
        target: library.watcher
        function onArrived(name) {
            dialogs.tell(qsTrId("trivex-app-arrived").arg(name))
        }
    }
    Connections {
        target: KeyStoreModel
        function onEntryRemovedChanged(success) {
            if (success)
                dialogs.tellRemoved()
        }
    }
    FileQueue {
        id: queue
        documentsFirst: window.current === "sign"
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
        onNewAsked: window.show("newRequest")
        onUndoAsked: dialogs.undoRemoval()
        onHelpAsked: dialogs.showManual()
        onQuitAsked: window.close()
    }

    RowLayout {
        anchors.fill: parent
        spacing: 0
        Sidebar {
            objectName: "sidebar"
            visible: window.columns === 3
            library: window.library
            current: window.current
            onChosen: window.show(key)
            onSettingsAsked: dialogs.showSettings()
            onHelpAsked: dialogs.showManual()
            Layout.fillHeight: true
        }
        WindowPages {
            id: pages
            library: window.library
            columns: window.columns
            current: window.current
            onAsked: window.show(key)
            onMenuAsked: drawer.open()
            onImportAsked: dialogs.chooseImport()
            onRemoveAsked: dialogs.askRemoval(what)
            onEditAsked: dialogs.editRequest(identity)
            onFactsAsked: dialogs.showTokenFacts(storeId)
            onTold: dialogs.tell(text)
            onFailed: dialogs.fail(cause, advice)
            onEnded: queue.next()
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.margins: Theme.unit * 1.75
        }
    }
    Drawer {
        id: drawer
        objectName: "drawer"
        width: Math.min(drawerBar.implicitWidth, window.width - 48)
        height: window.height
        interactive: window.columns < 3
        Sidebar {
            id: drawerBar
            anchors.fill: parent
            library: window.library
            current: window.current
            onChosen: window.show(key)
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
            window.openFiles(files.filter(function(path) { return path }))
        }
    }
    WindowDialogs {
        id: dialogs
        manual: window.manual
        anchors.fill: parent
        library: window.library
        selection: pages.listPage.selection
        onAboutToShow: drawer.close()
        onFilesAsked: window.openFiles(paths)
        onImportEnded: Qt.callLater(queue.next)
        onExpectationLeft: queue.leave()
    }
}
