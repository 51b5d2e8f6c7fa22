// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Qt.labs.platform 1.1 as Platform
import Trivex.Crypto.Tools 1.0

/// Saves several rows into one folder, each under its own name. A name that is taken there gets a
/// number: nothing is replaced, so nothing is asked.
Item {
    id: task
    objectName: "saveSeveral"
    property SectionedModel rows
    property string folder: Files.homeFolder
    /// What the dialog asks the folder of: identities in a list, of which one is the next.
    property var asked: null
    /// What is being saved, each set to its own folder. One that is chosen meanwhile comes after it.
    property var sets: []
    readonly property FileSaver saver: FileSaver {}
    signal saved(string folder)
    signal failed(string reason)

    function choose(identities) {
        // A search takes rows from the shown list, and nothing from this one.
        asked = { entries: rows.entries, identities: identities, next: 0, folder: "" }
        dialog.folder = Files.url(folder)
        dialog.open()
    }
    function saveNext() {
        const set = sets[0]
        const certificate = set.entries.certificateOf(set.identities[set.next])
        set.next += 1
        // What has gone meanwhile is in nobody's way.
        const good = !certificate || save(certificate, set.folder)
        if (good && set.next < set.identities.length)
            return
        sets = sets.slice(1)
        if (good)
            saved(set.folder)
    }
    function save(certificate, folder) {
        const staging = saver.stagingFolder()
        if (!staging || !certificate.exportToFile(staging)) {
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
            if (task.sets.length)
                task.saveNext()
            if (!task.sets.length)
                stop()
        }
    }
    Platform.FolderDialog {
        id: dialog
        title: qsTrId("trivex-app-export-title")
        onAccepted: {
            task.folder = Files.path(folder)
            task.asked.folder = task.folder
            task.sets = task.sets.concat([task.asked])
            clock.start()
        }
    }
}
