// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// What the dialogs that administer a token have in common: the token's name, its tries, consent to
/// the last one, and a task that may fail without closing the dialog. Whoever leaves it while the
/// token works is told by `done` or `failed`; where it is open, a failure is told in it.
BaseDialog {
    id: dialog
    /// Does the work.
    property TokenAdmin admin: TokenAdmin {
        onFinished: dialog.take()
    }
    /// The PIN that is tried is the administrator's.
    property bool byOfficer: false
    /// All is typed that has to be.
    property bool complete: false
    /// The text of the button that starts the task.
    property string confirmText: qsTrId("trivex-app-ok")
    /// The button has the colour of what can't be undone.
    property bool destructive: false
    /// What is said when it has worked, with %1 for the token's name.
    property string successText
    /// The fields of the dialog, in a column.
    default property alias fields: fieldColumn.data
    /// Another wrong PIN of the one who is asked locks it.
    readonly property bool lastTry: byOfficer ? admin.officerLastTry : admin.lastTry
    /// That PIN is locked.
    readonly property bool locked: byOfficer ? admin.officerLocked : admin.locked
    /// The task can be started.
    readonly property bool ready: complete && admin.present && !admin.running && !locked
        && (!lastTry || consent.checked)
    /// Why the last task failed, as a sentence; empty before.
    property string problem
    /// The name that the token has when the task begins.
    property string tokenName
    /// The name that it has when it has worked.
    property string resultName: tokenName
    /// The same as it was when the task began: what is typed is forgotten with the dialog.
    property string goal
    /// The task has worked; a sentence that says so.
    signal done(string text)
    /// The task failed after the dialog was closed: what went wrong, and what to do.
    signal failed(string cause, string advice)
    /// To be handled: starts the task.
    signal started(bool mayBeLastTry)
    /// To be handled: typed PINs that are no good any more. `wrong` and `refused` tell which alone.
    signal cleared(bool wrong, bool refused)

    preferredWidth: Theme.fontSize * 30

    /// Opens the dialog for the token of that store.
    function ask(storeId) {
        // Where the last task still runs, its dialog comes back.
        if (!admin.running) {
            admin.storeId = storeId
            tokenName = admin.name
            forget()
        }
        open()
    }
    /// Forgets what is typed.
    function forget() {
        cleared(false, false)
        problem = ""
        consent.checked = false
    }
    /// Starts the task, as Enter does.
    function submit() {
        if (!ready)
            return
        problem = ""
        goal = resultName
        started(consent.checked)
    }
    // internal
    function take() {
        const error = admin.error
        if (error === TokenAdmin.NoError) {
            const text = Texts.put(successText, [goal])
            forget()
            close()
            done(text)
            return
        }
        consent.checked = false
        cleared(error === TokenAdmin.WrongPin, error === TokenAdmin.NewPinRefused)
        if (left)
            failed(Texts.put(qsTrId("trivex-app-admin-left"), [tokenName]), admin.message)
        else
            problem = admin.message
    }
    onClosed: {
        admin.cancel()
        forget()
    }

    RowLayout {
        spacing: Theme.unit * 1.25
        Layout.fillWidth: true
        Icon {
            name: "token"
            color: Theme.link
        }
        Label {
            textFormat: Text.PlainText
            objectName: "adminTokenName"
            text: dialog.tokenName
            font.bold: true
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            Layout.fillWidth: true
        }
        BusyIndicator {
            objectName: "adminBusy"
            running: dialog.admin.running
            visible: running
            implicitWidth: Theme.iconSize * 1.4
            implicitHeight: implicitWidth
        }
    }
    Notice {
        text: dialog.admin.pinPad ? qsTrId("trivex-app-pin-pad-text") : ""
        Layout.fillWidth: true
    }
    FillColumn {
        id: fieldColumn
        enabled: !dialog.admin.running
        spacing: Theme.unit * 1.5
        Layout.fillWidth: true
    }
    TokenInfo {
        id: info
        storeId: dialog.admin.storeId
    }
    Notice {
        objectName: "adminTries"
        text: dialog.byOfficer ? dialog.admin.officerText
            : dialog.admin.pinSet ? info.pinText : ""
        level: dialog.lastTry || dialog.locked ? 3 : 2
        Layout.fillWidth: true
    }
    WrappedCheckBox {
        id: consent
        objectName: "adminConsent"
        text: qsTrId("trivex-app-pin-consent")
        visible: dialog.lastTry && !dialog.locked
        Layout.fillWidth: true
    }
    Notice {
        objectName: "adminProblem"
        level: 3
        text: dialog.problem || (dialog.admin.present || dialog.admin.running ? ""
            : qsTrId("trivex-app-admin-gone"))
        Layout.fillWidth: true
    }
    footer: DialogButtons {
        Button {
            objectName: "adminCancel"
            text: dialog.admin.running ? qsTrId("trivex-app-close") : qsTrId("trivex-app-cancel")
            onClicked: dialog.close()
        }
        Button {
            objectName: "adminConfirm"
            text: dialog.confirmText
            highlighted: !dialog.destructive
            enabled: dialog.ready
            onClicked: dialog.submit()
        }
    }
}
