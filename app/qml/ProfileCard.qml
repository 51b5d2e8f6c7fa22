// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Chooses what kind of request it is, and keeps the user's own kinds.
Card {
    id: card
    property KeyRequest request
    property var names: RequestProfiles.names
    readonly property string chosen: box.currentIndex >= 0 ? names[box.currentIndex] : ""
    /// What a profile says beside its fields is to be seen.
    signal loaded()
    signal failed(string cause, string advice)

    function refresh(wanted) {
        names = RequestProfiles.names
        box.currentIndex = Math.max(0, names.indexOf(wanted))
    }
    function load() {
        if (request.loadProfile(chosen))
            loaded()
        else
            failed(qsTrId("trivex-app-profile-unread"), qsTrId("trivex-app-profile-unread-advice"))
    }
    function remove() {
        // One that has gone already is removed as well.
        if (!RequestProfiles.remove(chosen) && RequestProfiles.exists(chosen)) {
            failed(qsTrId("trivex-app-profile-not-removed"),
                   qsTrId("trivex-app-profile-not-removed-advice"))
            return
        }
        refresh("")
        load()
    }
    Component.onCompleted: request.loadProfile(chosen)

    Label {
        textFormat: Text.PlainText
        text: qsTrId("trivex-app-profile")
        color: Theme.textDim
        font.pixelSize: Theme.smallSize
    }
    Flow {
        spacing: Theme.unit
        Layout.fillWidth: true
        ComboBox {
            id: box
            objectName: "profileChooser"
            model: card.names.map(function(name) { return RequestProfiles.title(name) })
            width: Math.min(Theme.fontSize * 18, parent.width)
            delegate: PlainDelegate {
                width: ListView.view ? ListView.view.width : implicitWidth
                text: modelData
                highlighted: box.highlightedIndex === index
                hoverEnabled: box.hoverEnabled
            }
            Accessible.name: qsTrId("trivex-app-profile") + ": " + currentText
            onActivated: card.load()
        }
        Button {
            objectName: "saveProfile"
            text: qsTrId("trivex-app-profile-save")
            flat: true
            width: Math.min(implicitWidth, parent.width)
            onClicked: dialog.open()
        }
        Button {
            objectName: "removeProfile"
            text: qsTrId("trivex-app-profile-remove")
            flat: true
            width: Math.min(implicitWidth, parent.width)
            visible: card.chosen.length > 0 && !RequestProfiles.isBuiltIn(card.chosen)
            onClicked: card.remove()
        }
    }
    BaseDialog {
        id: dialog
        objectName: "profileDialog"
        title: qsTrId("trivex-app-profile-save-title")
        /// Whoever presses again has been told that a profile of that name would go.
        property bool agreed: false
        function save() {
            const name = nameField.text.trim()
            if (!name)
                return
            const result = card.request.saveProfile(name, agreed)
            if (result === RequestProfiles.Saved) {
                close()
                card.refresh(RequestProfiles.listedName(name))
                return
            }
            agreed = result === RequestProfiles.Exists
            problem.level = agreed ? 2 : 3
            problem.text = agreed
                ? Texts.put(qsTrId("trivex-app-profile-exists"), [RequestProfiles.listedName(name)])
                : result === RequestProfiles.TooLarge ? qsTrId("trivex-app-profile-too-large")
                : qsTrId("trivex-app-profile-unsaved")
        }
        onAboutToShow: {
            problem.text = ""
            agreed = false
            nameField.text = RequestProfiles.isBuiltIn(card.chosen) ? "" : card.chosen
        }
        onOpened: nameField.field.forceActiveFocus(Qt.TabFocusReason)
        LabeledField {
            id: nameField
            label: qsTrId("trivex-app-profile-name")
            hint: qsTrId("trivex-app-profile-name-hint")
            field.objectName: "profileName"
            onTextChanged: {
                dialog.agreed = false
                problem.text = ""
            }
            field.onAccepted: dialog.save()
            Layout.fillWidth: true
        }
        Notice {
            id: problem
            objectName: "profileProblem"
            level: 3
            Layout.fillWidth: true
        }
        footer: DialogButtons {
            Button {
                objectName: "profileCancel"
                text: qsTrId("trivex-app-cancel")
                onClicked: dialog.close()
            }
            Button {
                objectName: "profileAccept"
                text: dialog.agreed ? qsTrId("trivex-app-replace-confirm") : qsTrId("trivex-app-save")
                highlighted: true
                enabled: nameField.text.trim().length > 0
                onClicked: dialog.save()
            }
        }
    }
}
