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
    signal handedOn(string path) ///< with `handsOn`: a file was chosen
    signal copied() ///< a value of what was looked at was put on the clipboard
    /// It ended otherwise, after the dialog was closed; `left` when its user left it.
    signal undone(string problem, bool left)
    signal gaveUp() ///< nobody wants to wait for the file of `expect` any more
    signal restLeft() ///< the files of `waitingFiles` are not wanted
    property int waitingFiles: 0 ///< those that are shown after this one, by others
    property bool handsOn: false ///< others decide where a chosen file is shown
    property alias entries: itemDialog.entries ///< where issuers are looked for
    property alias itemView: itemDialog ///< where one thing is looked at
    readonly property bool writing: job.running ///< the import is under way
    /// Closed while it writes, it takes another file when that has ended.
    readonly property bool busy: visible || writing
    property string expected ///< the file that somebody else reads at the moment
    readonly property bool reading: fileReading || expected ///< here or by somebody else
    // internal
    readonly property bool fileReading: file.reading
    onFileReadingChanged: if (!fileReading && visible) haveRead()
    /// The file is a PKCS#12 bundle, which wants a password.
    readonly property bool isBundle: file.kind === CertificateFile.BundleKind
    /// Something is ticked and can be imported.
    readonly property bool ready: !writing && file.items.checkedCount > 0
        && (chooser.usable || file.items.checkedCertificates === 0)
    property string name ///< of what is imported, taken when it begins
    property string place ///< where what is imported goes, taken when it begins
    objectName: "importDialog"
    preferredWidth: Theme.fontSize * 42 // names of certificates are long
    title: qsTrId("trivex-app-import-title")

    /// Nothing happens while it writes.
    function start(path) {
        if (writing)
            return
        expected = ""
        job.clear()
        password.clear()
        file.open(path)
        if (!file.reading)
            haveRead()
        open()
    }
    /// Shows that the file is being read, until `start`, or `close`.
    function expect(path) {
        if (writing)
            return
        forget()
        expected = path
        open()
    }
    /// What `expect` began is over.
    function release() {
        if (!expected)
            return
        expected = ""
        close()
    }
    // internal
    function haveRead() {
        if (isBundle || file.items.checkedKeys > 0)
            chooser.startOver()
        else
            chooser.refresh()
        if (isBundle)
            file.unlock("")
        if (opened)
            takeFocus()
    }
    // internal
    function takeFocus() {
        isBundle ? password.forceActiveFocus(Qt.PopupFocusReason) : focusFirst()
    }
    /// Lets the user choose the file.
    function choose() {
        fileChooser.open()
    }
    // internal
    function take(path) {
        if (handsOn)
            handedOn(path)
        else
            start(path)
    }
    // internal
    function forget() {
        job.clear()
        file.path = ""
    }
    // internal
    function write() {
        if (!ready)
            return
        name = file.items.value(list.firstChecked(), FileItemModel.NameRole)
        const own = file.items.checkedCertificates + file.items.checkedLists > 0 ? chooser.filesName
            : qsTrId("trivex-app-category-requests")
        place = file.items.checkedCertificates > 0 && !chooser.filesChosen ? chooser.tokenName : own
        job.start(file, chooser.filesChosen ? job.filesStoreId : chooser.storeId)
    }
    onOpened: if (isBundle) password.forceActiveFocus(Qt.PopupFocusReason)
    // Escape. Whoever only closes the dialog lets the import go on.
    onRejected: job.cancel()
    onClosed: {
        itemDialog.close()
        if (expected) {
            expected = ""
            gaveUp()
        }
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
            } else if (dialog.left && (written > 0 || !explained)) {
                dialog.undone(problem, job.left)
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
    ImportFileChooser {
        id: fileChooser
        dialog: dialog
        onChosen: dialog.take(path)
    }
    Label {
        textFormat: Text.PlainText
        text: Files.fileName(dialog.expected || file.path)
        font.bold: true
        elide: Text.ElideMiddle
        Layout.fillWidth: true
    }
    FileNotices {
        file: file
        waits: !password.text
        Layout.fillWidth: true
    }
    GridLayout {
        visible: dialog.isBundle && !file.unlocked
        // Beside the button there has to be room for a password.
        columns: width < unlockButton.implicitWidth + Theme.fontSize * 10 ? 1 : 2
        Layout.fillWidth: true
        PasswordField {
            id: password
            objectName: "bundlePassword"
            placeholderText: qsTrId("trivex-app-bundle-password-field")
            Accessible.name: placeholderText + ": " + Files.fileName(file.path)
            Layout.fillWidth: true
            onAccepted: file.unlock(text)
        }
        Button {
            id: unlockButton
            objectName: "bundleUnlock"
            text: qsTrId("trivex-app-bundle-open")
            enabled: !file.unlocking
            onClicked: file.unlock(password.text)
        }
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
    OwnFilesNotices {
        items: file.items
        chosen: chooser.filesChosen
        Layout.fillWidth: true
    }
    Notice {
        id: failure
        objectName: "importFailure"
        level: job.left ? 0 : 3
        text: job.problem
        Layout.fillWidth: true
    }
    RowLayout {
        visible: dialog.writing || file.unlocking || dialog.reading
        BusyIndicator {
            Accessible.name: busyLabel.text
        }
        Label {
            textFormat: Text.PlainText
            id: busyLabel
            objectName: "importBusy"
            text: dialog.reading ? qsTrId("trivex-app-reading")
                : file.unlocking ? qsTrId("trivex-app-bundle-opening")
                : qsTrId("trivex-app-busy-write")
        }
    }
    footer: ImportButtons {
        waiting: dialog.waitingFiles
        ready: dialog.ready
        onCancelled: {
            job.cancel()
            dialog.close()
        }
        onAccepted: dialog.write()
        onRestLeft: {
            dialog.restLeft()
            Qt.callLater(dialog.focusFirst) // the button that had the keys disappears
        }
    }
}
