// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import QtQuick.Window 2.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// The chosen certificate or request with what can be done with it. Empty when its row has gone.
Item {
    id: pane
    property RowSelection selection
    /// Several rows have no details in common: what is done would not be done to the shown one.
    readonly property bool several: selection.count > 1
    readonly property QtObject certificate: several ? null : selection.certificate
    readonly property bool isKey: !several && selection.isKey
    readonly property bool any: certificate !== null || isKey
    readonly property string entryId: selection.entryId
    readonly property string place: selection.place
    readonly property int storeType: selection.type
    readonly property bool hasKey: selection.hasKey
    /// Whether the key can make the signatures that the program makes.
    readonly property bool canSign: selection.keyKind !== EntryModel.NoKey
    /// Whether there is anything to choose.
    property bool offered: true
    readonly property bool isRequest: storeType === KeyStoreModel.Request
    signal removeAsked()
    signal signAsked()
    signal editAsked()
    signal requestAsked()
    signal exported(string path)
    signal copied()
    signal told(string text)
    signal failed(string cause, string advice)
    /// The item that had the keyboard focus has gone.
    signal keysLost()

    EmptyState {
        anchors.fill: parent
        visible: !pane.any && pane.offered
        icon: "certificate"
        title: pane.several ? qsTrId("trivex-app-details-several")
                            : qsTrId("trivex-app-details-none")
        text: pane.several ? "" : qsTrId("trivex-app-details-none-text")
    }
    CertificateChain {
        id: path
        objectName: "chain"
        entries: pane.certificate && !pane.isRequest ? pane.selection.rows.entries : null
        certificate: pane.isRequest ? null : pane.certificate
    }
    FileItemDialog {
        id: stepDialog
        objectName: "stepDialog"
        items: path.stepItems
        entries: path.entries
        onCopied: pane.copied()
    }
    // Made anew for each certificate: the info model announces no removal of its old rows.
    Loader {
        id: loader
        anchors.fill: parent
        active: pane.certificate !== null
        sourceComponent: details
    }
    Loader {
        id: keyLoader
        anchors.fill: parent
        active: pane.isKey
        sourceComponent: keyDetails
        onActiveChanged: if (!active && pane.keyHadKeys) pane.keysLost()
    }
    /// Whether the details of a key had the focus, noted before they go.
    property bool keyHadKeys: false
    onIsKeyChanged: keyHadKeys = !isKey && hasKeys()
    onCertificateChanged: {
        const had = hasKeys()
        loader.active = false
        loader.active = Qt.binding(function() { return pane.certificate !== null })
        if (had)
            keysLost()
    }
    function hasKeys() {
        for (let item = Window.activeFocusItem; item; item = item.parent) {
            if (item === pane)
                return true
        }
        return false
    }
    Component {
        id: keyDetails
        KeyDetailsPane {
            selection: pane.selection
            onRequestAsked: pane.requestAsked()
            onRemoveAsked: pane.removeAsked()
            onCopied: pane.copied()
        }
    }
    Component {
        id: details
        DetailsView {
            objectName: "detailsView"
            groups: rows.groups
            sections.hasEncoding: rows.hasEncoding
            sections.pem: function() { return rows.pem }
            sections.structure: function() { return rows.structure }
            sections.printable: true
            sections.onCopied: pane.copied()
            sections.onPdfAsked: printing.save(header.name, rows.groups)
            sections.onPrintAsked: printing.printOut(header.name, rows.groups)
            chain: pane.isRequest ? null : path
            onStepAsked: stepDialog.show(row)
            header.name: Texts.plain(pane.certificate.commonName
                || pane.certificate.fileName)
            header.from: pane.certificate.notValidBefore
            header.until: pane.certificate.notValidAfter
            header.validity: pane.isRequest ? Validity.Unknown
                : Validity.state(pane.certificate.notValidBefore, pane.certificate.notValidAfter)
            header.place: pane.place
            header.canRemove: pane.storeType !== KeyStoreModel.System
            header.canSign: pane.canSign
            header.canEdit: pane.isRequest
            header.note: pane.hasKey && token.keysPresumed
                ? qsTrId("trivex-app-key-presumed") : ""
            header.onExportAsked: pane.askWhere()
            header.onRemoveAsked: pane.removeAsked()
            header.onSignAsked: pane.signAsked()
            header.onEditAsked: pane.editAsked()
            header.onCopyAsked: {
                Desktop.copy(rows.text())
                pane.copied()
            }
            TokenInfo {
                id: token
                storeName: pane.place
            }
            CertificateInfoModel {
                id: info
                certificate: pane.certificate
                onInfoChanged: rows.rebuild()
            }
            CertificateDetails {
                id: rows
                info: info
                certificate: pane.certificate
            }
        }
    }
    DetailsPrinting {
        id: printing
        onSaved: pane.exported(path)
        onTold: pane.told(text)
        onFailed: pane.failed(cause, advice)
    }
    SaveTask {
        id: saving
        title: qsTrId("trivex-app-export-title")
        readonly property var plain: [
            [qsTrId("trivex-app-format-pem"), pane.isRequest ? ["csr", "pem"] : ["crt", "pem"],
             FileSaver.AsIs],
            [qsTrId("trivex-app-format-der"), pane.isRequest ? ["der", "p10"] : ["cer", "der"],
             FileSaver.Der]]
        readonly property var withIssuers: [
            [qsTrId("trivex-app-format-chain"), ["pem"], FileSaver.Chain],
            [qsTrId("trivex-app-format-p7b-chain"), ["p7b", "p7c"], FileSaver.Collection]]
        formats: pane.isRequest ? plain : plain.concat(withIssuers)
        onSaved: pane.exported(path)
        onFailed: pane.failed(qsTrId("trivex-app-export-failed"), reason)
    }
    // The issuers are looked for before one is asked, so that the answer is the last step.
    Exporter {
        id: exporter
        property string name
        onFinished: {
            if (error === Exporter.NoError)
                saving.choose(name)
            else if (message)
                pane.failed(qsTrId("trivex-app-export-failed"), message)
        }
    }
    /// Gives the keyboard focus to the first action on the row.
    function focusFirst() {
        const shown = loader.item || keyLoader.item
        const first = shown ? shown.nextItemInFocusChain(true) : null
        if (first)
            first.forceActiveFocus(Qt.TabFocusReason)
    }
    /// Saves what is shown at the moment of asking, whatever is shown once the dialog is answered.
    function stage() {
        exporter.cancel()
        saving.path = ""
        const folder = certificate !== null ? saving.saver.stagingFolder() : ""
        return folder !== "" && certificate.exportToFile(folder)
    }
    function askWhere() {
        const name = certificate
            ? Files.fileName(Files.exportPath(saving.folder, certificate.fileName)) : ""
        if (certificate && !isRequest) {
            // The last wish counts: what is still made for another has its own name.
            exporter.cancel()
            exporter.name = name
            saving.path = ""
            exporter.stage(selection.rows.entries, [selection.identity], saving.saver)
        } else if (stage()) {
            saving.choose(name)
        } else {
            failed(qsTrId("trivex-app-export-failed"), Files.whyNotWritten(saving.folder))
        }
    }
    function exportTo(folder) {
        if (!certificate || !folder)
            return
        const path = Files.exportPath(folder, certificate.fileName)
        if (stage())
            saving.take(path, 0)
        else
            failed(qsTrId("trivex-app-export-failed"), Files.whyNotWritten(folder))
    }
}
