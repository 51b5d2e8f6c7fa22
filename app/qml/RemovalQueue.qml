// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQml 2.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Tools 1.0

/// Removes certificates one after the other. Where one can't be removed, the others stay too: the
/// reason is most often theirs, and a wrong PIN would cost a try for each.
QtObject {
    id: queue
    property EntryModel entries
    property var waiting: []
    property bool running: false

    function start(rows) {
        waiting = waiting.concat(rows)
        if (!running)
            next()
    }
    function next() {
        // What has gone meanwhile would never be reported.
        while (waiting.length && entries.rowOfIdentity(waiting[0].identity) < 0)
            waiting = waiting.slice(1)
        running = waiting.length > 0
        if (!running)
            return
        const entryId = waiting[0].entryId
        waiting = waiting.slice(1)
        KeyStoreModel.removeCertificate(entryId)
    }
    readonly property Connections ends: Connections {
        target: KeyStoreModel
        function onEntryRemovedChanged(success) {
            if (!queue.running)
                return
            if (!success)
                queue.waiting = []
            Qt.callLater(queue.next)
        }
    }
}
