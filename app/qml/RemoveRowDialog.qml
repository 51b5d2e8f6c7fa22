// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQml 2.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Asks before the chosen row is removed, and does it. Closes by itself when that row is no longer
/// the chosen one: whoever said yes would say it to another.
RemoveDialog {
    id: dialog
    property Library library
    property RowSelection selection
    property var what: ({})
    readonly property bool gone: opened
        && (selection.identity !== what.identity || selection.row < 0)
    name: what.name || ""
    place: what.place || ""
    hasKey: what.hasKey === true
    isRequest: what.isRequest === true

    function ask(what_) {
        what = what_
        open()
    }
    function removeRequest(identity) {
        const request = library.savedRequest(identity)
        if (!request)
            return
        library.watcher.noteDeleted(request.fileName)
        library.requests.remove(library.requestEntries.rowOfIdentity(identity))
    }
    onConfirmed: isRequest ? removeRequest(what.identity)
                           : KeyStoreModel.removeCertificate(what.entryId)
    onGoneChanged: if (gone) closeLater.restart()
    // A list that is made anew is without its rows for a moment.
    readonly property Timer closeLater: Timer {
        id: closeLater
        interval: 250
        onTriggered: if (dialog.gone) dialog.close()
    }
}
