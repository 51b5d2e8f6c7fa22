// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Lets the user choose a file for `dialog`, which need not be open; made when it is first asked
/// for.
Loader {
    id: loader
    /// The dialog that the file is for.
    property BaseDialog dialog
    /// That file was chosen.
    signal chosen(string path)
    /// Opens the chooser.
    function open() {
        active = true
        item.open()
    }
    active: false
    // On a desktop without a dialog of its own the platform's dialog is drawn with widgets, which
    // need a `QApplication`.
    source: Desktop.hasWidgets ? "PlatformFileChooser.qml" : "FileChooser.qml"
    onLoaded: {
        // It would find no window by itself, because the dialog may not be open yet.
        if (item instanceof BaseDialog)
            item.parent = dialog.parent
        item.title = dialog.title
        item.nameFilters = [
            [qsTrId("trivex-app-filter-certificates"),
             ["*.pem", "*.crt", "*.cer", "*.der", "*.p7b", "*.p7c", "*.p12", "*.pfx",
              "*.csr", "*.p10", "*.req", "*.crl"]],
            [qsTrId("trivex-app-filter-all"), ["*"]]]
    }
    Connections {
        target: loader.item
        function onChosen(file) { loader.chosen(Files.path(file)) }
    }
}
