// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Qt.labs.platform 1.1 as Platform
import Trivex.Crypto.Tools 1.0

/// Saves several rows into one folder, each under its own name. A name that is taken there gets a
/// number: nothing is replaced, so nothing is asked.
Item {
    id: task
    property SectionedModel rows
    property string folder: Files.homeFolder
    property var waiting: []
    readonly property FileSaver saver: FileSaver {}
    signal saved(string folder)
    signal failed(string reason)

    function choose(identities) {
        waiting = identities
        dialog.folder = Files.url(folder)
        dialog.open()
    }
    function saveNext() {
        const identity = waiting[0]
        waiting = waiting.slice(1)
        const row = rows.rowOfIdentity(identity)
        const certificate = row < 0 ? null : rows.value(row, "certificate")
        // What has gone meanwhile is in nobody's way.
        if (certificate && !save(certificate))
            waiting = []
        else if (!waiting.length)
            saved(folder)
    }
    function save(certificate) {
        if (!certificate.exportToFile(saver.stagingFolder())) {
            failed(Files.whyNotWritten(folder))
            return false
        }
        const path = Files.exportPath(folder, certificate.fileName)
        const dot = path.lastIndexOf(".")
        let result = saver.place(path, false)
        for (let number = 2; result === FileSaver.Exists; ++number)
            result = saver.place(path.slice(0, dot) + " (" + number + ")" + path.slice(dot), false)
        if (result === FileSaver.Failed)
            failed(saver.problem)
        return result === FileSaver.Saved
    }
    // One at a time: thousands may be chosen, and the window is to stay alive.
    Timer {
        id: clock
        interval: 1
        repeat: true
        running: false
        onTriggered: {
            if (task.waiting.length)
                task.saveNext()
            if (!task.waiting.length)
                stop()
        }
    }
    Platform.FolderDialog {
        id: dialog
        title: qsTrId("trivex-app-export-title")
        onAccepted: {
            task.folder = Files.path(folder)
            clock.start()
        }
        onRejected: task.waiting = []
    }
}
