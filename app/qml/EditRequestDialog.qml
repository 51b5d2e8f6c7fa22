// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Changes the subject and the usages of a saved request and has it signed again by its key. It
/// stays open, with what was typed, until that is done.
BaseDialog {
    id: dialog
    property Library library
    /// The request's identity in the list. Its object there lasts only until the list is made anew.
    property string identity
    property QtObject target
    property bool saving: false
    property bool done: false
    property bool missing: false
    /// While it saves, somebody has told why the token failed; no other reason is shown then. Set
    /// from outside.
    property bool explained: false
    property string writtenFile
    property var others: []
    signal aboutToSave(string fileName)
    signal saved(string identity)
    signal failed(string cause, string advice)

    objectName: "editRequestDialog"
    title: qsTrId("trivex-app-edit-request-title")
    preferredWidth: Theme.fontSize * 44
    closePolicy: Popup.NoAutoClose

    function edit(identity_) {
        identity = identity_
        const request = library.savedRequest(identity)
        form.load(request)
        usages.load(request)
        others = RequestSubject.others(request, form.types)
        open()
    }
    function isChanged() { return form.isChanged() || usages.touched }
    function save() {
        if (saving || !form.check())
            return
        target = library.savedRequest(identity)
        if (!target) {
            failed(qsTrId("trivex-app-request-gone"), qsTrId("trivex-app-request-gone-advice"))
            return
        }
        const folder = target.requestPath()
        done = false
        explained = false
        // Told before a token asks for its PIN.
        apply()
        const refusal = RequestSubject.refusal(target)
        RequestSubject.restore(target)
        if (refusal) {
            target = null
            failed(qsTrId("trivex-app-request-not-saved"), refusal)
            return
        }
        // Without its key the old subject would be written under the new name.
        missing = !RequestSubject.hasKey(target)
        // Tokens were asked, and the list may be another one now.
        target = library.savedRequest(identity)
        if (!missing && target && apply()) {
            aboutToSave(target.fileName)
            saving = true
            target.setEditMode(true)
            saving = false
            RequestSubject.restore(target)
        } else {
            done = !missing && target !== null
        }
        end(folder)
    }
    // internal
    function leave() {
        if (isChanged())
            leaving.open()
        else
            close()
    }
    // internal
    function apply() {
        const named = form.apply(target)
        return usages.apply(target) || named
    }
    function end(folder) {
        target = null
        if (done) {
            close()
            if (writtenFile)
                saved(writtenFile)
        } else if (missing) {
            failed(qsTrId("trivex-app-request-no-key"), qsTrId("trivex-app-request-no-key-advice"))
        } else if (!explained) {
            failed(qsTrId("trivex-app-request-not-saved"), Files.whyNotWritten(folder))
        }
        writtenFile = ""
    }

    Connections {
        target: dialog.target
        function onRequestCreated() {
            dialog.done = true
            dialog.writtenFile = RequestSubject.file(dialog.target)
        }
        function onMissingPrivateKey() { dialog.missing = true }
    }
    // Many fields would be gone at a slip of the finger.
    Shortcut {
        sequence: "Escape"
        enabled: dialog.opened && !dialog.saving
        onActivated: dialog.leave()
    }
    LeaveEditing {
        id: leaving
        onConfirmed: dialog.close()
    }
    SubjectForm {
        id: form
        enabled: !dialog.saving
        Layout.fillWidth: true
    }
    Label {
        textFormat: Text.PlainText
        objectName: "editRequestOthers"
        text: dialog.others.length
            ? qsTrId("trivex-app-request-others").arg(dialog.others.join(", ")) : ""
        visible: text.length > 0
        color: Theme.textDim
        font.pixelSize: Theme.smallSize
        wrapMode: Text.WrapAtWordBoundaryOrAnywhere
        Layout.fillWidth: true
    }
    EditedUsages {
        id: usages
        enabled: !dialog.saving
        Layout.fillWidth: true
    }
    RowLayout {
        visible: dialog.saving
        Layout.fillWidth: true
        BusyIndicator {
            Accessible.name: savingLabel.text
        }
        Label {
            textFormat: Text.PlainText
            id: savingLabel
            text: qsTrId("trivex-app-busy-sign")
            wrapMode: Text.WordWrap
            Layout.fillWidth: true
            Accessible.role: Accessible.AlertMessage
        }
    }
    footer: DialogButtons {
        Button {
            objectName: "editRequestCancel"
            text: qsTrId("trivex-app-cancel")
            enabled: !dialog.saving
            onClicked: dialog.close()
        }
        Button {
            objectName: "editRequestSave"
            text: qsTrId("trivex-app-save")
            highlighted: true
            enabled: form.complete && !dialog.saving
            onClicked: dialog.save()
        }
    }
}
