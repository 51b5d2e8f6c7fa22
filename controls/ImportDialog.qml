// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

import Trivex.Crypto 1.0

/// Brings a certificate or a bundle onto a token: file, password where one is needed, preview,
/// token, one step. The content of the file decides what it is.
BaseDialog {
    id: dialog
    signal imported(string name)
    property bool writing: false
    /// True when the dialog was closed after the last step began.
    property bool wasLeft: false
    readonly property bool isBundle: file.kind === CertificateFile.BundleKind
    readonly property bool ready: !writing && chooser.usable
        && (file.kind === CertificateFile.CertificateKind && file.pemPath
            || isBundle && file.unlocked)
    readonly property string name: file.certificates.length ? file.certificates[0].name : ""

    objectName: "importDialog"
    title: qsTrId("trivex-app-import-title")

    function start(path) {
        failure.text = ""
        file.path = ""
        file.path = path
        password.clear()
        chooser.refresh()
        open()
        if (isBundle)
            file.unlock("")
    }
    /// Lets the user choose the file.
    function choose() {
        fileChooser.active = true
        fileChooser.item.open()
    }
    function write() {
        if (!ready)
            return
        failure.text = ""
        // Set before the call, because events arrive while a key is derived.
        writing = true
        wasLeft = false
        KeyStoreModel.setCertLocationId(chooser.location)
        KeyStoreModel.resetImportedKeyBundle()
        const loaded = isBundle ? KeyStoreModel.keyBundleFromFile(file.path, password.text)
                                : KeyStoreModel.certificateFromPEMFile(file.pemPath)
        if (!loaded || wasLeft) {
            writing = false
            KeyStoreModel.resetImportedKeyBundle()
            failure.text = wasLeft ? "" : qsTrId("trivex-app-import-changed")
            return
        }
        if (isBundle)
            KeyStoreModel.importKeyBundle()
        else
            KeyStoreModel.importCertificate()
    }
    onOpened: if (isBundle) password.forceActiveFocus(Qt.PopupFocusReason)
    onAboutToHide: wasLeft = true
    onClosed: {
        password.clear()
        if (!writing)
            file.path = ""
    }

    CertificateFile {
        id: file
        // The password field disappears, and the focus must not disappear with it.
        onUnlockedChanged: if (unlocked) Qt.callLater(dialog.focusFirst)
    }
    Loader {
        id: fileChooser
        active: false
        // On a desktop without a dialog of its own the platform's dialog is drawn with widgets,
        // which need a `QApplication`.
        source: Desktop.hasWidgets ? "PlatformFileChooser.qml" : "FileChooser.qml"
        onLoaded: {
            // It would find no window by itself, because this dialog may not be open yet.
            if (item instanceof BaseDialog)
                item.parent = dialog.parent
            item.title = dialog.title
            item.nameFilters = [
                [qsTrId("trivex-app-filter-certificates"),
                 ["*.pem", "*.crt", "*.cer", "*.der", "*.p12", "*.pfx"]],
                [qsTrId("trivex-app-filter-all"), ["*"]]]
        }
        Connections {
            target: fileChooser.item
            function onChosen(file) { dialog.start(Files.path(file)) }
        }
    }
    Connections {
        target: KeyStoreModel
        function onEntryWrittenChanged(isEmpty) {
            if (!dialog.writing)
                return
            dialog.writing = false
            KeyStoreModel.resetImportedKeyBundle()
            if (isEmpty) {
                failure.text = qsTrId("trivex-app-import-failed")
            } else {
                const name = dialog.name
                dialog.close()
                dialog.imported(name)
            }
        }
    }

    Label {
        textFormat: Text.PlainText
        text: Files.fileName(file.path)
        font.bold: true
        elide: Text.ElideMiddle
        Layout.fillWidth: true
    }
    Notice {
        objectName: "importProblem"
        readonly property bool firstTry: dialog.isBundle && !password.text && !file.unlocking
        level: firstTry ? 0 : 3
        text: file.unlocked ? "" : firstTry && file.problem ? qsTrId("trivex-app-bundle-ask")
            : file.problem ? file.problem
            : file.kind === CertificateFile.RequestKind ? qsTrId("trivex-app-kind-request")
            : file.kind === CertificateFile.PrivateKeyKind ? qsTrId("trivex-app-kind-key")
            : file.kind === CertificateFile.OtherKind ? qsTrId("trivex-app-kind-other") : ""
        Layout.fillWidth: true
    }
    RowLayout {
        visible: dialog.isBundle && !file.unlocked
        Layout.fillWidth: true
        PasswordField {
            id: password
            objectName: "bundlePassword"
            placeholderText: qsTrId("trivex-app-bundle-password-field")
            Accessible.name: qsTrId("trivex-app-bundle-password-field") + ": "
                             + Files.fileName(file.path)
            Layout.fillWidth: true
            onAccepted: file.unlock(text)
        }
        Button {
            objectName: "bundleUnlock"
            text: qsTrId("trivex-app-bundle-open")
            enabled: !file.unlocking
            onClicked: file.unlock(password.text)
        }
    }
    Repeater {
        model: file.certificates
        RowLayout {
            spacing: Theme.unit * 1.5
            Layout.fillWidth: true
            Avatar {
                letter: modelData.initial
                validity: Validity.state(modelData.from, modelData.until)
            }
            ColumnLayout {
                spacing: 2
                Layout.fillWidth: true
                Label {
                    textFormat: Text.PlainText
                    text: modelData.name
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
                Label {
                    textFormat: Text.PlainText
                    text: modelData.issuer
                    color: Theme.textDim
                    font.pixelSize: Theme.smallSize
                    elide: Text.ElideRight
                    Layout.fillWidth: true
                }
            }
            Badge {
                validity: Validity.state(modelData.from, modelData.until)
            }
        }
    }
    TokenChooser {
        id: chooser
        locations: KeyStoreModel.certLocation
        visible: dialog.isBundle || file.kind === CertificateFile.CertificateKind
        label: qsTrId("trivex-app-import-to")
        Layout.fillWidth: true
    }
    Notice {
        id: failure
        objectName: "importFailure"
        level: 3
        Layout.fillWidth: true
    }
    RowLayout {
        visible: dialog.writing || file.unlocking
        BusyIndicator {
            Accessible.name: busyLabel.text
        }
        Label {
            textFormat: Text.PlainText
            id: busyLabel
            text: file.unlocking ? qsTrId("trivex-app-bundle-opening") : qsTrId("trivex-app-busy-write")
        }
    }
    footer: DialogButtons {
        Button {
            objectName: "importCancel"
            text: qsTrId("trivex-app-cancel")
            onClicked: {
                if (dialog.writing)
                    chooser.info.cancel()
                dialog.close()
            }
        }
        Button {
            objectName: "importAccept"
            text: qsTrId("trivex-app-import-accept")
            highlighted: true
            enabled: dialog.ready
            onClicked: dialog.write()
        }
    }
}
