// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Asks for the password of a file that is to hold a private key, and has that file made:
/// `askRow(entries, identity, name)` or `askItem(items, row, entries, name)`. What is typed is
/// forgotten with the dialog; whoever closes it gives up.
BaseDialog {
    id: dialog
    /// Where the file waits for its place.
    property FileSaver saver
    /// Whose key it is.
    property string name
    // internal
    property var wish: null
    /// The file is being made.
    readonly property bool running: exporter.running
    /// A password was typed twice.
    readonly property bool ready: !running && first.text.length > 0 && first.text === second.text
    /// The file lies in `saver`.
    signal staged(string name)

    objectName: "keyExportDialog"
    title: qsTrId("trivex-app-export-key-title")
    preferredWidth: Theme.fontSize * 30

    /// For the row of `identity` in `entries`; `name_` is shown.
    function askRow(entries, identity, name_) {
        ask(name_, function(password) {
            exporter.stage(entries, identity, password, dialog.saver)
        })
    }
    /// For an item of a file.
    function askItem(items, row, entries, name_) {
        ask(name_, function(password) {
            exporter.stageItem(items, row, entries, password, dialog.saver)
        })
    }
    // internal
    function ask(name_, wish_) {
        exporter.cancel()
        name = name_
        wish = wish_
        problem.text = ""
        open()
    }
    /// Makes the file, when all is typed.
    function submit() {
        if (!ready)
            return
        problem.text = ""
        wish(first.text)
    }
    onOpened: first.focusField()
    onClosed: {
        exporter.cancel()
        first.clear()
        second.clear()
        wish = null
    }

    KeyExporter {
        id: exporter
        onFinished: {
            if (error === KeyExporter.NoError && dialog.opened) {
                const whose = dialog.name
                dialog.close()
                dialog.staged(whose)
            } else if (error === KeyExporter.TokenRefused) {
                dialog.close()
            } else {
                problem.text = message
            }
        }
    }
    Label {
        objectName: "keyExportName"
        textFormat: Text.PlainText
        text: dialog.name
        font.bold: true
        wrapMode: Text.WrapAtWordBoundaryOrAnywhere
        Layout.fillWidth: true
    }
    Label {
        textFormat: Text.PlainText
        text: qsTrId("trivex-app-export-key-text")
        wrapMode: Text.WordWrap
        Layout.fillWidth: true
    }
    SecretField {
        id: first
        field.objectName: "exportPassword"
        label: qsTrId("trivex-app-export-key-password")
        hint: qsTrId("trivex-app-export-key-hint")
        enabled: !dialog.running
        Layout.fillWidth: true
        onAccepted: second.focusField()
    }
    SecretField {
        id: second
        field.objectName: "exportPasswordAgain"
        label: qsTrId("trivex-app-export-key-again")
        flag: text && !first.text.startsWith(text)
              || text && !field.activeFocus && text !== first.text
            ? qsTrId("trivex-app-passwords-differ") : ""
        enabled: !dialog.running
        Layout.fillWidth: true
        onAccepted: dialog.submit()
    }
    Notice {
        id: problem
        objectName: "keyExportProblem"
        level: 3
        Layout.fillWidth: true
    }
    BusyIndicator {
        objectName: "keyExportBusy"
        running: dialog.running
        visible: running
        implicitWidth: Theme.iconSize * 1.4
        implicitHeight: implicitWidth
        Accessible.name: qsTrId("trivex-app-export-key-busy")
    }
    footer: DialogButtons {
        Button {
            objectName: "keyExportCancel"
            text: qsTrId("trivex-app-cancel")
            onClicked: dialog.close()
        }
        Button {
            objectName: "keyExportAccept"
            text: qsTrId("trivex-app-export-key-accept")
            highlighted: true
            enabled: dialog.ready
            onClicked: dialog.submit()
        }
    }
}
