// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQml 2.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Asks before the chosen rows are removed, and does it. Closes by itself when these rows are no
/// longer the chosen ones: whoever said yes would say it to others.
RemoveDialog {
    id: dialog
    property Library library
    property RowSelection selection
    property RemovalUndo undo
    /// Requests were deleted.
    signal deleted()
    signal keyRemoved()
    signal failed(string cause, string advice)
    /// What `RowActions` knows of each row.
    property var rows: []
    /// How many names are told.
    readonly property int most: 8
    readonly property bool gone: opened && (selection.count !== rows.length
        || rows.length === 1 && selection.identity !== rows[0].identity)
    count: rows.length
    name: rows.slice(0, most).map(function(row) { return row.name }).join("\n")
    more: Math.max(0, rows.length - most)
    place: rows.map(function(row) { return row.place })
        .filter(function(name, index, all) { return all.indexOf(name) === index }).join(", ")
    hasKey: rows.some(function(row) { return row.hasKey })
    isKey: rows.length > 0 && rows.every(function(row) { return row.isKey })
    requests: rows.filter(function(row) { return row.isKey && row.request })
        .map(function(row) { return row.request }).join(", ")
    isRequest: rows.some(function(row) { return row.isRequest })

    function ask(rows_) {
        rows = rows_
        open()
    }
    /// False for a request that stays; its identity is the path of its file.
    function removeRequest(identity) {
        const request = library.savedRequest(identity)
        if (!request)
            return true
        const fileName = request.fileName
        undo.note(library.requestEntries, identity)
        library.requests.remove(library.requestEntries.rowOfIdentity(identity))
        if (Files.exists(identity)) {
            undo.forgetLast()
            return false
        }
        library.watcher.noteDeleted(fileName)
        return true
    }
    function removeRequests() {
        undo.begin()
        const left = rows.filter(function(row) { return !removeRequest(row.identity) })
        if (left.length < rows.length)
            deleted()
        if (left.length)
            failed(Texts.put(qsTrId("trivex-app-request-stays"), [left[0].name]),
                   qsTrId("trivex-app-request-stays-advice"))
    }
    onConfirmed: {
        if (isRequest) {
            removeRequests()
        } else {
            queue.start(rows)
        }
    }
    onGoneChanged: if (gone) closeLater.restart()
    // A list that is made anew is without its rows for a moment.
    readonly property Timer closeLater: Timer {
        id: closeLater
        interval: 250
        onTriggered: if (dialog.gone) dialog.close()
    }
    readonly property RemovalQueue queue: RemovalQueue {
        id: queue
        entries: dialog.library.entries
        undo: dialog.undo
        onKeyRemoved: dialog.keyRemoved()
    }
}
