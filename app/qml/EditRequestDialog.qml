// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Changes the subject of a saved request and has it signed again by its key.
BaseDialog {
    id: dialog
    property QtObject request
    property bool done: false
    signal aboutToSave(string fileName)
    signal saved()
    signal failed(string cause, string advice)

    objectName: "editRequestDialog"
    title: qsTrId("trivex-app-edit-request-title")
    preferredWidth: Theme.fontSize * 44

    function edit(request_) {
        request = request_
        form.load(request_)
        open()
    }
    function save() {
        done = false
        missing = false
        explained = false
        aboutToSave(request.fileName)
        if (!form.apply(request)) {
            close()
            return
        }
        const edited = request
        close()
        edited.setEditMode(true)
        if (missing)
            failed(qsTrId("trivex-app-request-no-key"), qsTrId("trivex-app-request-no-key-advice"))
        else if (done)
            saved()
        else if (!explained)
            failed(qsTrId("trivex-app-request-not-saved"), Files.whyNotWritten(folder))
    }
    property bool missing: false
    /// Set while it saves by whoever told the token's own failure, which is then the reason.
    property bool explained: false
    readonly property string folder: request ? request.requestPath() : ""
    onRequestChanged: if (!request) close()

    Connections {
        target: dialog.request
        function onRequestCreated() { dialog.done = true }
        function onMissingPrivateKey() { dialog.missing = true }
    }
    SubjectForm {
        id: form
        identifiers: false
        Layout.fillWidth: true
    }
    footer: DialogButtons {
        Button {
            text: qsTrId("trivex-app-cancel")
            onClicked: dialog.close()
        }
        Button {
            objectName: "editRequestSave"
            text: qsTrId("trivex-app-save")
            highlighted: true
            enabled: form.complete
            onClicked: dialog.save()
        }
    }
}
