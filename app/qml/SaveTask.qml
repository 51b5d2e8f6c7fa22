// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Asks for name, folder and format, and for leave before a file is replaced; then puts there what
/// was staged. Each of `formats` is [name, suffixes, a `FileSaver.Format`].
Item {
    id: task
    property string title
    property var formats: []
    property string path
    property int format: FileSaver.AsIs
    property string folder: Files.homeFolder
    /// Tells the question of this task from that of another.
    property alias questionName: question.objectName
    readonly property FileSaver saver: FileSaver {}
    signal saved(string path)
    signal failed(string reason)

    function choose(name) {
        dialog.offer(folder + "/" + name)
    }
    /// A suffix that only one format has decides, else the format that was chosen; a name without
    /// one of them gets it.
    function take(chosen, index) {
        const suffix = Files.fileName(chosen).replace(/^.*\./, "").toLowerCase()
        const wanted = formats[index] || formats[0]
        const has = function(one) { return one[1].indexOf(suffix) >= 0 }
        const found = has(wanted) ? wanted : formats.find(has)
        format = (found || wanted)[2]
        path = found ? chosen : chosen + "." + wanted[1][0]
        folder = Files.folder(path)
        place(false)
    }
    function place(mayReplace) {
        const result = saver.place(path, mayReplace, format)
        if (result === FileSaver.Saved)
            saved(path)
        else if (result === FileSaver.Exists)
            question.ask(path)
        else
            failed(saver.problem)
    }
    SaveDialog {
        id: dialog
        title: task.title
        nameFilters: task.formats.map(function(format) {
            return format[0] + " (" + format[1].map(function(suffix) {
                return "*." + suffix }).join(" ") + ")"
        })
        // When it is gone: what opens over it gets no keys.
        onAccepted: Qt.callLater(task.take, Files.path(file), selectedNameFilter.index)
    }
    ReplaceDialog {
        id: question
        onConfirmed: task.place(true)
        onOtherAsked: task.choose(Files.fileName(task.path))
    }
}
