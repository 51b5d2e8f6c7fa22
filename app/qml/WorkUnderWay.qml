// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQml 2.15

/// What would be lost or left half done if the window closed now. Whatever else takes its time, or
/// keeps what was typed, goes in here with its line.
QtObject {
    property Library library
    property WindowPages pages
    property WindowDialogs dialogs

    /// A sentence each; none when the window may close.
    function lines() {
        const works = said([
            [pages.working, qsTrId("trivex-app-quit-signing")],
            [pages.makingRequest, qsTrId("trivex-app-quit-request")],
            [dialogs.writing, qsTrId("trivex-app-quit-import")],
            [dialogs.removing, qsTrId("trivex-app-quit-removal")],
            [dialogs.undoing, qsTrId("trivex-app-quit-undo")],
            [dialogs.savingRequest, qsTrId("trivex-app-quit-edit")],
            [dialogs.exporting || pages.exporting, qsTrId("trivex-app-quit-export")]
        ])
        const typed = said([
            [dialogs.requestChanged, qsTrId("trivex-app-quit-changes")],
            [pages.requestFilled, qsTrId("trivex-app-quit-filled")]
        ])
        // Other work of tokens is known by them alone.
        return (works.length ? works : library.tokens.works()).concat(typed)
    }
    /// Asks what works to end: what has several steps begins no other.
    function stop() {
        pages.stop()
        dialogs.stop()
        library.tokens.stopWorks()
    }
    // internal
    function said(table) {
        return table.filter(function(one) { return one[0] })
            .map(function(one) { return one[1] })
    }
}
