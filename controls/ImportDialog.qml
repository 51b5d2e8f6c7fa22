// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

import Trivex.Crypto 1.0

/// Shows what a file holds, whatever it is called, and brings what is ticked to a token or to the
/// user's own files: file, password where one is needed, place, one step.
BaseDialog {
    id: dialog
    /// All that was ticked is at its place; `name` is that of the first one.
    signal imported(string name, int count, string place)
    /// With `handsOn`, a file was chosen, and whoever hears of it decides where it is shown.
    signal handedOn(string path)
    signal copied()
    property bool handsOn: false
    /// Where the issuers of what is looked at are looked for.
    property alias entries: itemDialog.entries
    readonly property bool writing: job.running
    /// Closed while it writes, it takes another file when that has ended.
    readonly property bool busy: visible || writing
    readonly property bool isBundle: file.kind === CertificateFile.BundleKind
    readonly property bool ready: !writing && file.items.checkedCount > 0
        && (chooser.usable || file.items.checkedCertificates === 0)
    /// Of what is imported, taken when it begins.
    property string name
    property string place

    objectName: "importDialog"
    title: qsTrId("trivex-app-import-title")

    /// Nothing happens while it writes.
    function start(path) {
        if (writing)
            return
        job.clear()
        file.open(path)
        password.clear()
        if (isBundle || file.items.checkedKeys > 0)
            chooser.startOver()
        else
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
    function take(path) {
        if (handsOn)
            handedOn(path)
        else
            start(path)
    }
    function forget() {
        job.clear()
        file.path = ""
    }
    function write() {
        if (!ready)
            return
        name = file.items.value(list.firstChecked(), FileItemModel.NameRole)
        place = file.items.checkedCertificates === 0 ? qsTrId("trivex-app-category-requests")
            : chooser.filesChosen ? chooser.filesName : chooser.tokenName
        job.start(file, chooser.filesChosen ? job.filesStoreId : chooser.storeId)
    }
    onOpened: if (isBundle) password.forceActiveFocus(Qt.PopupFocusReason)
    onClosed: {
        itemDialog.close()
        password.clear()
        if (!writing)
            forget()
    }

    CertificateFile {
        id: file
        // The password field disappears, and the focus must not disappear with it.
        onUnlockedChanged: if (unlocked) Qt.callLater(dialog.focusFirst)
    }
    CertificateImport {
        id: job
        requestFolder: requests.requestPath()
        onFinished: {
            if (good) {
                dialog.close()
                dialog.imported(dialog.name, written, dialog.place)
            }
            if (!dialog.visible)
                dialog.forget()
        }
    }
    CertificateRequest {
        id: requests
    }
    FileItemDialog {
        id: itemDialog
        items: file.items
        parent: dialog.parent
        onCopied: dialog.copied()
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
                 ["*.pem", "*.crt", "*.cer", "*.der", "*.p7b", "*.p7c", "*.p12", "*.pfx",
                  "*.csr", "*.p10", "*.req", "*.crl"]],
                [qsTrId("trivex-app-filter-all"), ["*"]]]
        }
        Connections {
            target: fileChooser.item
            function onChosen(file) { dialog.take(Files.path(file)) }
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
            : kinds[file.kind] || ""
        /// What to know of files that hold no certificate.
        readonly property var kinds: ({
            [CertificateFile.RequestKind]: qsTrId("trivex-app-kind-request"),
            [CertificateFile.PrivateKeyKind]: qsTrId("trivex-app-kind-key"),
            [CertificateFile.PublicKeyKind]: qsTrId("trivex-app-kind-public-key"),
            [CertificateFile.RevocationListKind]: qsTrId("trivex-app-kind-list"),
            [CertificateFile.MessageKind]: qsTrId("trivex-app-kind-message"),
            [CertificateFile.SignatureKind]: qsTrId("trivex-app-kind-signature"),
            [CertificateFile.OtherKind]: qsTrId("trivex-app-kind-other")
        })
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
    Notice {
        objectName: "importBroken"
        level: 2
        text: file.broken > 0 && file.items.count > 0
            ? qsTrId("trivex-app-kind-broken", file.broken) : ""
        Layout.fillWidth: true
    }
    FileItemList {
        id: list
        items: file.items
        enabled: !dialog.writing
        onViewAsked: itemDialog.show(row)
        Layout.fillWidth: true
    }
    TokenChooser {
        id: chooser
        locations: KeyStoreModel.certLocation
        filesName: qsTrId("trivex-app-category-users")
        visible: file.items.certificateCount > 0
        enabled: !dialog.writing
        label: qsTrId("trivex-app-import-to")
        Layout.fillWidth: true
    }
    Notice {
        objectName: "importWithoutKey"
        level: 0
        text: chooser.filesChosen && file.items.checkedKeys > 0
            ? qsTrId("trivex-app-import-without-key") : ""
        Layout.fillWidth: true
    }
    Notice {
        id: failure
        objectName: "importFailure"
        level: 3
        text: job.problem
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
                job.cancel()
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
