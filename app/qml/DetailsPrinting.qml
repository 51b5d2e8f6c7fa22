// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Saves details as a PDF document, or hands one to the program that shows and prints such.
Item {
    id: printing
    readonly property bool busy: pdf.running
    property bool toBeSaved: false
    property string fileName
    signal saved(string path)
    signal told(string text)
    signal failed(string cause, string advice)

    // internal
    function mayBegin() {
        if (busy)
            told(qsTrId("trivex-app-print-busy"))
        return !busy
    }
    function save(title, groups) {
        if (!mayBegin())
            return
        toBeSaved = true
        fileName = Files.fileName(Files.exportPath(saving.folder, title + ".pdf"))
        pdf.write(saving.saver.stagedPath("details.pdf"), title, groups)
    }
    function printOut(title, groups) {
        if (!mayBegin())
            return
        toBeSaved = false
        pdf.write(pdf.temporaryPath(), title, groups)
    }
    DetailsPdf {
        id: pdf
        objectName: "detailsPdf"
        onFinished: {
            if (isWritten && printing.toBeSaved)
                saving.choose(printing.fileName)
            else if (!isWritten || !Desktop.openFile(path))
                printing.failed(qsTrId("trivex-app-print-failed"),
                                qsTrId("trivex-app-print-failed-advice"))
        }
    }
    SaveTask {
        id: saving
        title: qsTrId("trivex-app-save-pdf")
        questionName: "pdfReplaceDialog"
        formats: [[qsTrId("trivex-app-format-pdf"), ["pdf"], FileSaver.AsIs]]
        onSaved: printing.saved(path)
        onFailed: printing.failed(qsTrId("trivex-app-export-failed"), reason)
    }
}
