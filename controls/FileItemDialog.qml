// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Everything in one thing of a file, which need not be imported for that.
BaseDialog {
    id: dialog
    /// What the file holds; not owned.
    property FileItemModel items
    /// Where the issuers of a certificate are looked for, beside the file itself.
    property EntryModel entries: null
    /// The row that is shown; -1 for none.
    property int row: -1
    /// What is shown, in the form of `CertificateDetails.groups`.
    property var groups: []
    /// It has bytes, so that there is a PEM text and a structure.
    readonly property bool encoded: row >= 0 && items !== null && items.hasEncoding(row)
    /// Whether the private key of the row may leave: a `KeyLeave.Leave`.
    readonly property int leave: row >= 0 && items !== null && visible ? KeyLeave.ofItem(items, row)
                                                                       : KeyLeave.NoKey
    /// Whether private keys can be asked for at all.
    property bool offersKeys: false
    /// A value was put on the clipboard.
    signal copied()
    /// The private key of that row is to be saved.
    signal keyExportAsked(int row, string name)

    objectName: "itemDialog"
    preferredWidth: Theme.fontSize * 52

    /// Opens the dialog for that row.
    function show(which) {
        row = which
        sections.show(0)
        verdict.startOver()
        groups = items.details(which)
        title = items.value(which, FileItemModel.NameRole)
        open()
    }
    onClosed: groups = []

    CertificateChain {
        id: path
        entries: dialog.visible ? dialog.entries : null
        items: dialog.items
        itemRow: dialog.visible ? dialog.row : -1
    }
    // The row is another thing by then, or none.
    Connections {
        target: dialog.items
        function onModelReset() { dialog.close() }
    }
    ChainView {
        id: verdict
        chain: path
        canShow: false
        Layout.fillWidth: true
    }
    DetailSections {
        id: sections
        groups: dialog.groups
        hasEncoding: dialog.encoded
        pem: function() { return dialog.items.pem(dialog.row) }
        structure: function() { return dialog.items.structure(dialog.row) }
        onCopied: dialog.copied()
        Layout.fillWidth: true
    }
    Label {
        objectName: "itemKeyReason"
        textFormat: Text.PlainText
        text: exportKey.visible ? KeyLeave.reason(dialog.leave) : ""
        visible: text.length > 0
        color: Theme.textDim
        wrapMode: Text.WordWrap
        Layout.fillWidth: true
    }
    footer: DialogButtons {
        Button {
            id: exportKey
            objectName: "itemExportKey"
            text: qsTrId("trivex-app-export-key")
            icon.source: Theme.icon("key")
            visible: dialog.offersKeys && dialog.leave !== KeyLeave.NoKey
            enabled: dialog.leave === KeyLeave.Leaves
            onClicked: dialog.keyExportAsked(dialog.row, dialog.title)
        }
        Button {
            objectName: "itemCopy"
            text: qsTrId("trivex-app-copy-all")
            icon.source: Theme.icon("copy")
            onClicked: {
                Desktop.copy(dialog.items.detailsText(dialog.row))
                dialog.copied()
            }
        }
        Button {
            objectName: "itemClose"
            text: qsTrId("trivex-app-close")
            highlighted: true
            focus: true
            onClicked: dialog.close()
        }
    }
}
