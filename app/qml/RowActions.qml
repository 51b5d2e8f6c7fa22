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
    readonly property bool canRemove: count > 0 && selection.type >= 0
        && selection.type !== KeyStoreModel.System
    readonly property bool canSign: one && selection.keyKind !== EntryModel.NoKey
    readonly property bool canEdit: one && isRequest
    signal removeAsked(var what)
    signal signAsked(string entryId)
    signal editAsked(string identity)
    signal exported(string path)
    signal copied()
    signal failed(string cause, string advice)

    /// What is known of the chosen rows.
    function chosen() {
        const rows = selection.rows
        return selection.chosenRows().map(function(row) {
            const certificate = rows.value(row, "certificate")
            return { identity: rows.value(row, "identity"),
                     entryId: rows.value(row, "entryId") || "",
                     name: Texts.plain(certificate.commonName || certificate.fileName),
                     issuer: rows.value(row, "issuer"),
                     validity: Validity.word(rows.value(row, "validity")),
                     until: rows.value(row, "until"),
                     place: rows.value(row, "storeName"),
                     hasKey: rows.value(row, "hasKey") === true,
                     type: rows.value(row, "type"),
                     isRequest: rows.value(row, "type") === KeyStoreModel.Request }
        })
    }
    function remove() {
        if (canRemove)
            removeAsked(chosen())
    }
    function sign() {
        if (canSign)
            signAsked(selection.entryId)
    }
    function edit() {
        if (canEdit)
            editAsked(selection.identity)
    }
    /// One line for each row, of what it shows.
    function copy() {
        if (count === 0)
            return
        Desktop.copy(chosen().map(function(row) {
            return [row.name, row.isRequest ? "" : row.issuer, row.validity,
                    row.isRequest || !row.until ? "" : Validity.until(row.until), row.place]
                .filter(function(part) { return part }).join(", ")
        }).join("\n"))
        copied()
    }
    function identities() {
        return chosen().map(function(row) { return row.identity })
    }
    function exportRows() {
        if (one)
            pane.askWhere()
        else if (count > 1)
            several.choose(identities())
    }
    /// Several rows into one file.
    function exportTogether() {
        if (count > 1)
            together.choose(identities())
    }
    function copyPem() {
        if (count > 0)
            together.copy(identities())
    }
    // The buttons over the details.
    Connections {
        target: actions.pane
        function onRemoveAsked() { actions.remove() }
        function onSignAsked() { actions.sign() }
        function onEditAsked() { actions.edit() }
        function onExported(path) { actions.exported(path) }
        function onCopied() { actions.copied() }
        function onFailed(cause, advice) { actions.failed(cause, advice) }
    }
    ExportTogether {
        id: together
        rows: actions.selection.rows
        onSaved: actions.exported(path)
        onCopied: actions.copied()
        onFailed: actions.failed(cause, advice)
    }
    SaveSeveral {
        id: several
        rows: actions.selection.rows
        onSaved: actions.exported(folder)
        onFailed: actions.failed(qsTrId("trivex-app-export-failed"), reason)
    }
}
