// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// What can be done with the chosen rows, one or several, by button, key and menu alike.
Item {
    id: actions
    property RowSelection selection
    property CertificateDetailsPane pane
    readonly property int count: selection.count
    readonly property bool one: count === 1
    readonly property bool isRequest: selection.type === KeyStoreModel.Request
    /// The system's own certificates nobody removes here.
    readonly property bool canRemove: count > 0 && (selection.isKey || selection.type >= 0
        && selection.type !== KeyStoreModel.System)
    /// A key alone is nothing to export.
    readonly property bool canExport: count > 1 || !selection.isKey
    readonly property bool canRequest: one && selection.isKey
        && selection.rows.value(selection.row, "canRequest") === true
    readonly property bool canSign: one && !selection.isKey
        && selection.keyKind !== EntryModel.NoKey
    readonly property bool hasKey: one && !selection.isKey && selection.hasKey
    readonly property bool canEdit: one && isRequest
    /// Files are being made of rows.
    readonly property bool exporting: several.sets.length > 0 || together.running
        || keyExport.running
    signal removeAsked(var what)
    signal signAsked(string entryId)
    signal editAsked(string identity)
    signal requestAsked(string storeId, string keyId, string name)
    signal exported(string path)
    signal copied()
    signal told(string text)
    signal failed(string cause, string advice)

    /// How many names a question tells.
    readonly property int named: 8
    function remove() {
        if (canRemove)
            removeAsked(selection.summary(named))
        else if (count > 0)
            failed(qsTrId("trivex-app-system-stays"), qsTrId("trivex-app-system-stays-advice"))
    }
    function request() {
        if (canRequest)
            requestAsked(selection.rows.value(selection.row, "storeId"),
                         selection.rows.value(selection.row, "keyId"),
                         selection.rows.value(selection.row, "name"))
    }
    function sign() {
        if (canSign)
            signAsked(selection.entryId)
    }
    function edit() {
        if (canEdit)
            editAsked(selection.identity)
    }
    function whyKeyStays() {
        return hasKey ? KeyLeave.reason(KeyLeave.ofRow(selection.rows.entries, selection.identity))
                      : ""
    }
    function exportKey() {
        if (hasKey && !whyKeyStays())
            keyExport.askRow(selection.rows.entries, selection.identity,
                             selection.summary(1).names[0])
    }
    /// One line for each row, of what it shows.
    function copy() {
        if (count > 0)
            lines.write(selection)
    }
    /// Of the rows that can become files. Without any it says why, where `aloud`.
    function identities(aloud) {
        const files = selection.chosenIdentities()
        if (aloud && count > 0 && files.length === 0)
            failed(qsTrId("trivex-app-export-failed"), qsTrId("trivex-app-keys-are-no-files"))
        return files
    }
    function exportRows() {
        const files = identities(true)
        if (one && files.length)
            pane.askWhere()
        else if (files.length)
            several.choose(files)
    }
    /// Several rows into one file.
    function exportTogether() {
        const files = identities(true)
        if (count > 1 && files.length)
            together.choose(files)
    }
    function copyPem() {
        const files = identities(true)
        if (files.length)
            together.copy(files)
    }
    // The buttons over the details.
    Connections {
        target: actions.pane
        function onRemoveAsked() { actions.remove() }
        function onSignAsked() { actions.sign() }
        function onEditAsked() { actions.edit() }
        function onRequestAsked() { actions.request() }
        function onExported(path) { actions.exported(path) }
        function onCopied() { actions.copied() }
        function onTold(text) { actions.told(text) }
        function onFailed(cause, advice) { actions.failed(cause, advice) }
    }
    RowLines {
        id: lines
        onFinished: {
            if (!text)
                return
            Desktop.copy(text)
            actions.copied()
        }
    }
    ExportTogether {
        id: together
        rows: actions.selection.rows
        onSaved: actions.exported(path)
        onCopied: actions.copied()
        onFailed: actions.failed(cause, advice)
    }
    KeyExport {
        id: keyExport
        onSaved: actions.exported(path)
        onFailed: actions.failed(cause, advice)
    }
    SaveSeveral {
        id: several
        rows: actions.selection.rows
        onSaved: actions.exported(folder)
        onFailed: actions.failed(qsTrId("trivex-app-export-failed"), reason)
    }
}
