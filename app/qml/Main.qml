// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import QtQuick.Window 2.15
import Trivex.Crypto.Controls 1.0

import Qt.labs.settings 1.0

/// The window as it stands first: its side bar, and the place of the pages. What works with
/// certificates is made behind the first frame. Nothing in here imports Trivex.Crypto, which looks
/// for QCA's providers when it is loaded.
ApplicationWindow {
    id: window
    objectName: "mainWindow"
    width: 1180
    height: 760
    minimumWidth: 360
    minimumHeight: 420
    visible: true
    title: Qt.application.displayName
    // Controls turn round by their locale, rows and columns do not; and the texts, for want of a
    // catalogue in such a language, run from left to right.
    locale: Qt.locale().textDirection === Qt.RightToLeft ? Qt.locale("C") : Qt.locale()

    /// The page that is shown, as `WindowPages` names it.
    property string current: "personal"
    /// The width in what text of a usual size would need: large text gets fewer columns.
    readonly property real room: width / Math.max(1, Theme.fontSize / 15)
    readonly property int columns: room >= 900 ? 3 : room >= 640 ? 2 : 1
    /// The manual in the user's language, which the program loads.
    property string manual
    /// A `WindowWork`; null until the first frame is drawn.
    readonly property Item work: worker.item
    readonly property QtObject library: work ? work.library : null
    /// Files that came before there was somebody to open them.
    property var early: []
    /// What was asked for then: names of its functions.
    property var wishes: []

    onClosing: close.accepted = !work || work.mayClose()

    function openFiles(files) {
        if (work)
            work.openFiles(files)
        else
            early = early.concat(files)
    }
    function show(key) {
        if (work)
            work.leave()
        current = key
        if (work)
            work.arrive()
    }
    /// Makes what works with certificates, if it is not there yet.
    function begin() {
        if (worker.status === Loader.Null)
            worker.setSource("WindowWork.qml", { window: window, place: place })
    }
    function ask(wish) {
        begin()
        if (work)
            work[wish]()
        else
            wishes = wishes.concat(wish)
    }

    Settings {
        property alias mode: themeMirror.mode
        property alias textScale: themeMirror.textScale
        property alias width: window.width
        property alias height: window.height
    }
    ThemeMirror {
        id: themeMirror
        window: window
    }
    Connections {
        target: window
        enabled: !window.work
        // In a turn of its own, when the frame is on its way to the screen.
        function onFrameSwapped() { Qt.callLater(window.begin) }
    }
    // A window that nobody sees yet has no frames, and its work is due all the same.
    Timer {
        interval: 500
        running: !window.work
        onTriggered: window.begin()
    }

    // The keys of `WindowShortcuts` that mean something before it is there.
    Shortcut {
        sequence: StandardKey.HelpContents
        enabled: !window.work
        onActivated: window.ask("showManual")
    }
    Shortcut {
        sequence: StandardKey.Open
        enabled: !window.work
        onActivated: window.ask("chooseImport")
    }
    Shortcut {
        sequence: StandardKey.Quit
        enabled: !window.work
        onActivated: window.close()
    }

    RowLayout {
        anchors.fill: parent
        spacing: 0
        Sidebar {
            objectName: "sidebar"
            visible: window.columns === 3
            library: window.library
            current: window.current
            onChosen: window.show(key)
            onSettingsAsked: window.ask("showSettings")
            onHelpAsked: window.ask("showManual")
            Layout.fillHeight: true
        }
        Item {
            id: place
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.margins: Theme.unit * 1.75
        }
    }
    Loader {
        id: worker
        anchors.fill: parent
        focus: true
        onLoaded: {
            item.openFiles(window.early)
            window.early = []
            for (const wish of window.wishes)
                item[wish]()
            window.wishes = []
            // A page that was chosen meanwhile wants the keys.
            if (window.current !== item.firstPage)
                item.arrive()
        }
    }
}
