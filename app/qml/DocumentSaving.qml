// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Saves the document that lies in a signature, where a person wants it.
Item {
    id: saving
    property CmsWork work

    function choose() {
        dialog.offer(Files.folder(work.signatureFile) + "/" + work.documentName)
    }
    SaveDialog {
        id: dialog
        title: qsTrId("trivex-app-save-document")
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
