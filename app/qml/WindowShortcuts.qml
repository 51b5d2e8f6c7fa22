// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Window 2.15

/// The keys that work on every page. `HelpDialog` names them.
Item {
    id: shortcuts
    property ListPage listPage
    signal openAsked()
    signal newAsked()
    signal undoAsked()
    signal helpAsked()
    signal quitAsked()

    Shortcut {
        sequence: StandardKey.Find
        onActivated: shortcuts.listPage.visible && shortcuts.listPage.focusSearch()
    }
    Shortcut {
        sequence: StandardKey.Open
        onActivated: shortcuts.openAsked()
    }
    Shortcut {
        sequence: StandardKey.New
        onActivated: shortcuts.newAsked()
    }
    Shortcut {
        // A field that is typed into takes the keys for itself.
        sequences: [StandardKey.Undo]
        onActivated: shortcuts.undoAsked()
    }
    Shortcut {
        sequence: StandardKey.HelpContents
        onActivated: shortcuts.helpAsked()
    }
    Shortcut {
        // In dialogs too, but for those of the platform, which have a window of their own.
        context: Qt.ApplicationShortcut
        enabled: shortcuts.Window.active
        sequence: StandardKey.Quit
        onActivated: shortcuts.quitAsked()
    }
    Shortcut {
        sequences: [StandardKey.Back, "Escape"]
        enabled: shortcuts.listPage.visible && shortcuts.listPage.canGoBack
        onActivated: shortcuts.listPage.goBack()
    }
}
