// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

import Qt.labs.platform 1.1 as Platform

/// The chosen certificate or request with what can be done with it. Empty when its row has gone.
Item {
    id: pane
    property QtObject certificate
    property string entryId
    property string place
    property int storeType: -1
    property bool hasKey: false
    /// Whether the key can make the signatures that the program makes.
    property bool canSign: false
    /// Whether there is anything to choose.
    property bool offered: true
    readonly property bool isRequest: storeType === KeyStoreModel.Request
    signal removeAsked()
    signal signAsked()
    signal editAsked()
    signal exported(string path)
    signal failed(string cause, string advice)

    EmptyState {
        anchors.fill: parent
        visible: !pane.certificate && pane.offered
        icon: "certificate"
        title: qsTrId("trivex-app-details-none")
        text: qsTrId("trivex-app-details-none-text")
    }
    // Made anew for each certificate: the info model announces no removal of its old rows.
    Loader {
        id: loader
        anchors.fill: parent
        active: pane.certificate !== null
        sourceComponent: details
    }
    onCertificateChanged: {
        loader.active = false
        loader.active = Qt.binding(function() { return pane.certificate !== null })
    }
    Component {
        id: details
        DetailsView {
            objectName: "detailsView"
            groups: rows.groups
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
            header.onExportAsked: folderDialog.open()
            header.onRemoveAsked: pane.removeAsked()
            header.onSignAsked: pane.signAsked()
            header.onEditAsked: pane.editAsked()
            header.onCopyAsked: Desktop.copy(rows.text())
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
    Platform.FolderDialog {
        id: folderDialog
        title: qsTrId("trivex-app-export-title")
        onAccepted: pane.exportTo(Files.path(folder))
    }
    function exportTo(folder) {
        if (!certificate || !folder)
            return
        const path = Files.exportPath(folder, certificate.fileName)
        // A disk that fills up is seen only in what was written.
        if (certificate.exportToFile(folder) && Files.isWholePem(path))
            exported(path)
        else
            failed(qsTrId("trivex-app-export-failed"), Files.whyNotWritten(folder))
    }
}
