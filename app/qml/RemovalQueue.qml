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
    /// Rows, or their identities: of thousands nothing is read before it is their turn.
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
    /// What is known of one that waits.
    function known(one) {
        if (typeof one !== "string")
            return one
        const row = entries.rowOfIdentity(one)
        return { identity: one, isKey: false, name: Rows.value(entries, row, "name"),
                 type: Rows.value(entries, row, "type"),
                 entryId: Rows.value(entries, row, "entryId") }
    }
    function next() {
        let at = 0
        let row = null
        for (; at < waiting.length; ++at) {
            row = known(waiting[at])
            // Its end may come before its beginning is told.
            if (row.isKey && at > 0) {
                waiting = waiting.slice(at)
                at = 0
            }
            if (row.isKey ? startKey(row) : willEnd(row))
                break
        }
        waiting = waiting.slice(at)
        running = waiting.length > 0
        if (!running || row.isKey)
            return
        undo.note(entries, row.identity)
        waiting = waiting.slice(1)
        KeyStoreModel.removeCertificate(row.entryId)
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
