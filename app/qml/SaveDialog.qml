// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import Qt.labs.platform 1.1 as Platform
import Trivex.Crypto.Tools 1.0

/// The desktop's dialog for a file that is to be written. Whether one is replaced is asked by
/// whoever writes it, for the name that it gets in the end.
Platform.FileDialog {
    id: dialog
    fileMode: Platform.FileDialog.SaveFile
    options: Platform.FileDialog.DontConfirmOverwrite

    /// Opens it in that folder with that name to take or to change.
    function offer(path) {
        const directory = Files.folder(path)
        // Between such marks the dialog of Qt expects one of several names.
        const file = Files.url(directory + "/" + Files.fileName(path).replace(/"/g, "'"))
        folder = Files.url(directory)
        currentFile = file
        open()
        // One that was made only now did not take the name.
        currentFile = file
    }
}
