// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQml 2.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Tools 1.0

/// Removes certificates and keys one after the other. Where one can't be removed, the others stay too: the
/// reason is most often theirs, and a wrong PIN would cost a try for each.
QtObject {
    id: queue
    property EntryModel entries
    property var waiting: []
    property bool running: false
    property RemovalUndo undo
    signal keyRemoved()

    function start(rows) {
        undo.begin()
        waiting = waiting.concat(rows)
        if (!running)
            next()
    }
    /// Begins none of those that wait; what is under way ends as it may.
    function stop() { waiting = waiting.slice(0, keyWork.running ? 1 : 0) }
    /// Whether an end will be reported: of what has gone meanwhile, of the system's own and of what
    /// has no name or id the store says nothing, and everything behind it would wait for ever.
    function willEnd(row) {
        return entries.rowOfIdentity(row.identity) >= 0 && row.type !== KeyStoreModel.System
            && row.name && row.entryId && isKnown(row.entryId)
    }
    function isKnown(entryId) {
        const idRole = 262
        return KeyStoreModel.match(KeyStoreModel.index(0, 0), idRole, entryId, 1,
                                   Qt.MatchExactly).length > 0
    }
    function next() {
        while (waiting.length && (waiting[0].isKey ? !startKey(waiting[0]) : !willEnd(waiting[0])))
            waiting = waiting.slice(1)
        running = waiting.length > 0
        if (!running || waiting[0].isKey)
            return
        const entryId = waiting[0].entryId
        undo.note(entries, waiting[0].identity)
        waiting = waiting.slice(1)
        KeyStoreModel.removeCertificate(entryId)
    }
    /// False where nothing has begun, and no end follows.
    function startKey(row) {
        return keyWork.remove(row.storeId, row.keyId)
    }
    readonly property TokenKeyWork keyWork: TokenKeyWork {
        onFinished: {
            queue.waiting = succeeded ? queue.waiting.slice(1) : []
            if (succeeded)
                queue.keyRemoved()
            Qt.callLater(queue.next)
        }
    }
    readonly property Connections ends: Connections {
        target: KeyStoreModel
        function onEntryRemovedChanged(success) {
            if (!queue.running || queue.keyWork.running)
                return
            if (!success) {
                queue.waiting = []
                queue.undo.forgetLast()
            }
            Qt.callLater(queue.next)
        }
    }
}
