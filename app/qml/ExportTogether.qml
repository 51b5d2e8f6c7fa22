// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Exports rows into one file, or copies them as PEM. What is selected when one asks is what is
/// exported.
Item {
    id: task
    objectName: "exportTogether"
    property SectionedModel rows
    readonly property bool running: exporter.running
    property bool toClipboard: false
    signal saved(string path)
    signal copied()
    signal failed(string cause, string advice)

    function choose(identities) { start(identities, false) }
    function copy(identities) { start(identities, true) }
    function start(identities, toClipboard_) {
        // The last wish counts.
        exporter.cancel()
        toClipboard = toClipboard_
        // A search takes rows from the shown list, and nothing from this one.
        exporter.stage(rows.entries, identities, toClipboard ? null : saving.saver)
    }
    Exporter {
        id: exporter
        onFinished: {
            if (error !== Exporter.NoError) {
                if (message)
                    task.failed(qsTrId("trivex-app-export-failed"), message)
            } else if (task.toClipboard) {
                Desktop.copy(text)
                task.copied()
            } else {
                saving.formats = saving.forms(certificatesOnly)
                saving.choose(qsTrId("trivex-app-export-name") + ".pem")
            }
        }
    }
    SaveTask {
        id: saving
        title: qsTrId("trivex-app-export-title")
        questionName: "togetherReplaceDialog"
        function forms(all) {
            const pem = [[qsTrId("trivex-app-format-pem"), ["pem", "crt"], FileSaver.AsIs]]
            return all ? pem.concat([[qsTrId("trivex-app-format-p7b"), ["p7b", "p7c"],
                                      FileSaver.Collection]]) : pem
        }
        onSaved: task.saved(path)
        onFailed: task.failed(qsTrId("trivex-app-export-failed"), reason)
    }
}
