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
    /// What `RowSelection` says of the rows that are to go.
    property var rows: ({ count: 0, identity: "", names: [], places: [], requests: [],
                          identities: [], keys: [] })
    readonly property bool gone: opened && (selection.count !== rows.count
        || rows.count === 1 && selection.identity !== rows.identity)
    count: rows.count
    name: rows.names.join("\n")
    more: rows.count - rows.names.length
    place: rows.places.join(", ")
    hasKey: rows.hasKey === true
    isKey: rows.isKey === true
    requests: rows.requests.join(", ")
    isRequest: rows.isRequest === true

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
    function nameOf(identity) {
        const request = library.savedRequest(identity)
        return request ? Texts.plain(request.commonName || request.fileName) : ""
    }
    function removeRequests() {
        undo.begin()
        const left = Array.from(rows.identities).filter(function(one) { return !removeRequest(one) })
        if (left.length < rows.count)
            deleted()
        if (left.length)
            failed(Texts.put(qsTrId("trivex-app-request-stays"), [nameOf(left[0])]),
                   qsTrId("trivex-app-request-stays-advice"))
    }
    onConfirmed: {
        if (isRequest) {
            removeRequests()
        } else {
            queue.start(Array.from(rows.identities).concat(Array.from(rows.keys)))
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
