// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQml 2.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Tells what was removed, and offers to bring it back where that can be done.
QtObject {
    id: task
    property Toast toast
    readonly property RemovalUndo undo: RemovalUndo {
        onFinished: {
            if (good)
                task.toast.show(qsTrId("trivex-app-undone", count))
            // What a token refused, it has said itself.
            else if (problem)
                task.failed(qsTrId("trivex-app-undo-failed"), problem)
        }
    }
    signal failed(string cause, string advice)

    function tell() {
        toast.show(qsTrId("trivex-app-removed"), undo.count > 0 ? qsTrId("trivex-app-undo") : "")
    }
    function start() {
        undo.undo()
    }
    readonly property Connections offer: Connections {
        target: task.toast
        function onAction() { task.start() }
    }
}
