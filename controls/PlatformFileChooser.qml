// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQml 2.15
import Qt.labs.platform 1.1 as Platform

/// Lets the user choose a file by the desktop's own dialog. `nameFilters` holds pairs of a name and
/// its patterns.
QtObject {
    id: chooser
    property alias title: dialog.title
    property var nameFilters: []
    signal chosen(url file)
    function open() {
        dialog.open()
    }
    readonly property QtObject dialog_: Platform.FileDialog {
        id: dialog
        nameFilters: chooser.nameFilters.map(function(filter) {
            return filter[0] + " (" + filter[1].join(" ") + ")"
        })
        // It is still shown now, and whoever hears of it may open a dialog of the window, which
        // would get no keys behind this one.
        onAccepted: Qt.callLater(chooser.chosen, file)
    }
}
