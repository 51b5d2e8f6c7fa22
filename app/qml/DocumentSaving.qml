// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Qt.labs.platform 1.1 as Platform
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Saves the document that lies in a signature, where a person wants it.
Item {
    id: saving
    property CmsWork work

    function choose() {
        // Between such marks the dialog of Qt expects one of several names.
        const name = work.documentName.replace(/"/g, "'")
        dialog.currentFile = Files.url(Files.folder(work.signatureFile) + "/" + name)
        dialog.open()
    }
    Platform.FileDialog {
        id: dialog
        title: qsTrId("trivex-app-save-document")
        fileMode: Platform.FileDialog.SaveFile
        // Asked here instead, for the name that the file gets in the end.
        options: Platform.FileDialog.DontConfirmOverwrite
        onAccepted: Qt.callLater(saving.work.save, Files.path(file), false)
    }
    ReplaceDialog {
        id: question
        objectName: "documentReplaceDialog"
        onConfirmed: saving.work.save(path, true)
        onOtherAsked: saving.choose()
    }
    Connections {
        target: saving.work
        function onSaveReplaceAsked(path) { question.ask(path) }
    }
}
