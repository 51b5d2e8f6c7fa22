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

    /// The chosen category, "token:<store>", "requests", "newRequest" or "sign".
    property string current: "personal"
    /// The width in what text of a usual size would need: large text gets fewer columns.
    readonly property real room: width / Math.max(1, Theme.fontSize / 15)
    readonly property int columns: room >= 900 ? 3 : room >= 640 ? 2 : 1
    property alias library: library
    property alias listPage: listPage

    function openFiles(files) {
        queue.add(files)
    }
    function show(key) {
        drawer.close()
        current = key
        Qt.callLater(focusPage)
    }
    /// The keys go where one types next.
    function focusPage() {
        const page = listPage.visible ? listPage : pages.item || requestPage.item
        if (page)
            page.focusFirst()
    }
    function requestEnded() {
        editDialog.explained = true
        requestPage.generationEnded()
    }

    Settings {
        property alias mode: themeMirror.mode
        property alias textScale: themeMirror.textScale
        property alias width: window.width
        property alias height: window.height
        property alias sortKey: listPage.sortKey
        property alias sortDescending: listPage.descending
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
            if (pages.item && pages.item.working === true)
                return
            errorDialog.show(library.errors.cause, library.errors.advice, library.errors.report)
        }
        function onLeft() { window.requestEnded() }
    }
    Connections {
        target: library.watcher
        function onArrived(name) {
            toast.show(qsTrId("trivex-app-arrived").arg(name))
        }
    }
    Connections {
        target: KeyStoreModel
        function onEntryRemovedChanged(success) {
            if (success)
                toast.show(qsTrId("trivex-app-removed"))
        }
    }
    FileQueue {
        id: queue
        documentsFirst: window.current === "sign"
        // Until a signature is made its page has no place for another document.
        isBlocked: function() {
            return importDialog.busy || pages.item && pages.item.working
        }
        onImportable: importDialog.start(path)
        onDocument: {
            window.show("sign")
            pages.item.open(path)
        }
        onLeftOut: toast.show(qsTrId("trivex-app-one-document"))
    }

    WindowShortcuts {
        listPage: listPage
        onOpenAsked: importDialog.choose()
        onNewAsked: window.show("newRequest")
        onHelpAsked: helpDialog.open()
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
            onSettingsAsked: settingsDialog.open()
            onHelpAsked: helpDialog.open()
            Layout.fillHeight: true
        }
        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.margins: Theme.unit * 1.75
            ListPage {
                id: listPage
                objectName: "listPage"
                anchors.fill: parent
                focus: true
                visible: !pages.active && !requestPage.visible
                library: window.library
                columns: window.columns
                key: visible ? window.current : key
                onMenuAsked: drawer.open()
                onImportAsked: importDialog.choose()
                onNewRequestAsked: window.show("newRequest")
                onRemoveAsked: removeDialog.ask(what)
                onSignAsked: {
                    window.show("sign")
                    pages.item.selectEntry(entryId)
                }
                onEditAsked: editDialog.edit(identity)
                onCopied: toast.show(qsTrId("trivex-app-copied"))
                onExported: toast.show(qsTrId("trivex-app-exported").arg(path))
                onFailed: errorDialog.show(cause, advice)
            }
            Loader {
                id: pages
                anchors.fill: parent
                active: window.current === "sign"
                sourceComponent: signPage
                focus: active
            }
            NewRequestLoader {
                id: requestPage
                anchors.fill: parent
                shown: window.current === "newRequest"
                columns: window.columns
                onMenuAsked: drawer.open()
                onFailed: errorDialog.show(cause, advice)
                onSavedUnseen: toast.show(qsTrId("trivex-app-saved"))
            }
        }
    }
    Component {
        id: signPage
        SignPage {
            objectName: "signPage"
            columns: window.columns
            library: window.library
            onMenuAsked: drawer.open()
            onWorkingChanged: if (!working) queue.next()
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
            onSettingsAsked: settingsDialog.open()
            onHelpAsked: helpDialog.open()
        }
    }
    DropArea {
        anchors.fill: parent
        keys: ["text/uri-list"]
        onDropped: {
            const files = []
            for (const url of drop.urls)
                files.push(Files.path(url))
            drop.accept(Qt.CopyAction)
            window.openFiles(files.filter(function(path) { return path }))
        }
    }

    PinPromptDialog { id: pinPrompt }
    ImportDialog {
        id: importDialog
        handsOn: true
        // Names are strangers' and may hold marks, too: both are put in at once.
        onImported: toast.show(
            count > 1 ? qsTrId("trivex-app-imported-many", count).arg(place)
                      : qsTrId("trivex-app-imported").replace(
                            /%([12])/g, (mark, number) => number === "1" ? name : place))
        onHandedOn: window.openFiles([path])
        onCopied: toast.show(qsTrId("trivex-app-copied"))
        onBusyChanged: if (!busy) Qt.callLater(queue.next)
        onAboutToShow: drawer.close()
    }
    RemoveRowDialog {
        id: removeDialog
        library: window.library
        selection: listPage.selection
    }
    EditRequestDialog {
        id: editDialog
        library: window.library
        onAboutToSave: library.watcher.noteDeleted(fileName)
        onSaved: {
            // Under its new name it is the chosen one still.
            listPage.selection.identity = identity
            toast.show(qsTrId("trivex-app-saved"))
        }
        onFailed: errorDialog.show(cause, advice)
    }
    SettingsDialog {
        id: settingsDialog
        onAboutToShow: drawer.close()
    }
    HelpDialog {
        id: helpDialog
        onAboutToShow: drawer.close()
    }
    ErrorDialog { id: errorDialog; held: pinPrompt.visible }
    Toast {
        id: toast
    }
}
