// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// The dialogs of the window, and the line that tells what is done. A new dialog goes in here with
/// one function that opens it.
Item {
    id: dialogs
    property Library library
    /// The rows that are chosen in the list.
    property RowSelection selection
    /// The text of the manual, in HTML.
    property string manual
    /// No other file has a place: it would cover what was said of the last one.
    readonly property bool importing: importDialog.busy || errorDialog.visible
    readonly property alias writing: importDialog.writing
    /// Files that come to the import after the one that it shows.
    property alias waitingFiles: importDialog.waitingFiles
    readonly property bool removing: removeDialog.queue.running
    readonly property bool undoing: undo.undo.running
    readonly property alias savingRequest: editDialog.saving
    readonly property bool exporting: keyExport.running
    /// What was typed into a request is not saved.
    readonly property bool requestChanged: editDialog.visible && !editDialog.saving
        && editDialog.isChanged()
    /// Where a notice begins that stays for long: the pages end above it.
    readonly property real noticeTop: toast.visible && toast.actionText ? toast.y : Infinity
    onImportingChanged: if (!importing) importEnded()
    /// The drawer has to make room for a dialog that is about to open.
    signal aboutToShow()
    /// Files that the import has no use for.
    signal filesAsked(var paths)
    /// None of the files that wait is wanted.
    signal restLeft()
    /// The import takes files again.
    signal importEnded()
    /// The file that was expected is not waited for any more.
    signal expectationLeft()

    /// Somebody has agreed to lose what `mayClose` was told of.
    signal closeAsked()

    /// Whether the window may close over that; if not, it is asked about.
    function mayClose(lines) {
        const may = quitDialog.agreed || lines.length === 0
        quitDialog.agreed = false
        if (!may)
            quitDialog.ask(lines)
        return may
    }
    function tell(text) { toast.show(text) }
    /// The rows that were to be removed are, or some of them.
    function tellRemoved() { undo.tell() }
    function undoRemoval() { undo.start() }
    function fail(cause, advice, report) { errorDialog.show(cause, advice, report) }
    function chooseImport() { importDialog.choose() }
    function startImport(path) { importDialog.start(path) }
    function stop() {
        if (writing)
            importDialog.reject()
        removeDialog.queue.stop()
    }
    /// A file is being read, which may turn out to be one for the import.
    function expectImport(path) { importDialog.expect(path) }
    function expectNoImport() { importDialog.release() }
    function askRemoval(rows) { removeDialog.ask(rows) }
    function editRequest(identity) { editDialog.edit(identity) }
    function showTokenFacts(storeId) { tokenFacts.show(storeId) }
    function showSettings() { settingsDialog.open() }
    function showManual() { manualDialog.open() }
    /// An operation on a token has ended, well or not: an edited request may be written.
    function operationEnded() { editDialog.explained = true }

    PinPromptDialog { id: pinPrompt }
    ImportDialog {
        id: importDialog
        handsOn: true
        entries: dialogs.library.entries
        onImported: toast.show(
            count > 1 ? Texts.put(qsTrId("trivex-app-imported-many", count), [place])
                      : Texts.put(qsTrId("trivex-app-imported"), [name, place]))
        onRestLeft: dialogs.restLeft()
        onHandedOn: dialogs.filesAsked([path])
        onUndone: left ? toast.note(problem) : errorDialog.show(
            qsTrId("trivex-app-import-undone"), problem)
        onGaveUp: dialogs.expectationLeft()
        onCopied: toast.show(qsTrId("trivex-app-copied"))
        onAboutToShow: dialogs.aboutToShow()
        itemView.offersKeys: true
        itemView.onKeyExportAsked: keyExport.askItem(itemView.items, row, entries, name)
    }
    KeyExport {
        id: keyExport
        dialogName: "fileKeyExportDialog"
        onSaved: toast.show(Texts.put(qsTrId("trivex-app-exported"), [path]))
        onFailed: errorDialog.show(cause, advice)
    }
    RemoveRowDialog {
        id: removeDialog
        library: dialogs.library
        selection: dialogs.selection
        undo: undo.undo
        onDeleted: dialogs.tellRemoved()
        onFailed: errorDialog.show(cause, advice)
        // There is no way back from that, and none is offered.
        onKeyRemoved: toast.show(qsTrId("trivex-app-key-removed"))
    }
    UndoRemoval {
        id: undo
        toast: toast
        onFailed: errorDialog.show(cause, advice)
    }
    EditRequestDialog {
        id: editDialog
        library: dialogs.library
        onAboutToSave: dialogs.library.watcher.noteDeleted(fileName)
        onSaved: {
            // Under its new name it is the chosen one still.
            dialogs.selection.identity = identity
            toast.show(qsTrId("trivex-app-saved"))
        }
        onFailed: errorDialog.show(cause, advice)
    }
    TokenFactsDialog {
        id: tokenFacts
        onCopied: toast.show(qsTrId("trivex-app-copied"))
        onAboutToShow: dialogs.aboutToShow()
    }
    SettingsDialog {
        id: settingsDialog
        onAboutToShow: dialogs.aboutToShow()
    }
    ManualDialog {
        id: manualDialog
        manual: dialogs.manual
        onAboutToShow: dialogs.aboutToShow()
        onKeysAsked: helpDialog.open()
    }
    HelpDialog {
        id: helpDialog
        onAboutToShow: dialogs.aboutToShow()
    }
    ErrorDialog {
        id: errorDialog
        held: pinPrompt.visible
    }
    QuitDialog {
        id: quitDialog
        property bool agreed: false
        onAboutToShow: dialogs.aboutToShow()
        onConfirmed: {
            agreed = true
            dialogs.closeAsked()
        }
    }
    Toast {
        id: toast
    }
}
