// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Saves a private key with its certificate and the issuers: asks for a password, makes the file,
/// then asks where it is to lie.
Item {
    id: task
    property alias dialogName: dialog.objectName
    readonly property alias running: dialog.running
    signal saved(string path)
    signal failed(string cause, string advice)
    signal aboutToShow()

    function askRow(entries, identity, name) { dialog.askRow(entries, identity, name) }
    function askItem(items, row, entries, name) { dialog.askItem(items, row, entries, name) }

    KeyExportDialog {
        id: dialog
        saver: saving.saver
        onStaged: saving.choose(Files.fileName(Files.exportPath(saving.folder, name + ".p12")))
        onAboutToShow: task.aboutToShow()
    }
    SaveTask {
        id: saving
        title: qsTrId("trivex-app-export-key-title")
        questionName: "keyReplaceDialog"
        formats: [[qsTrId("trivex-app-format-p12"), ["p12", "pfx"], FileSaver.AsIs]]
        onSaved: task.saved(path)
        onFailed: task.failed(qsTrId("trivex-app-export-failed"), reason)
    }
}
