// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Asks before a certificate signs that is valid no more, or not yet.
BaseDialog {
    id: dialog
    initialFocus: harmless
    objectName: "confirmExpired"
    property string name
    property string reason
    property var action: null

    title: qsTrId("trivex-app-expired-title")

    /// Does `action` at once for a key whose certificate is valid, and after a yes for one that is
    /// not, unless another was chosen meanwhile. `keys` gives a role of the chosen key by `value`.
    function guard(keys, action_) {
        const certificate = keys.value("certificate")
        const validity = certificate
            ? Validity.state(certificate.notValidBefore, certificate.notValidAfter) : Validity.Unknown
        if (validity !== Validity.Expired && validity !== Validity.NotYet) {
            action_()
            return
        }
        const entry = keys.value("entryId")
        name = Texts.plain(certificate.commonName || certificate.fileName)
        reason = validity === Validity.Expired
            ? qsTrId("trivex-app-expired-text").arg(Validity.date(certificate.notValidAfter))
            : qsTrId("trivex-app-not-yet-text").arg(Validity.date(certificate.notValidBefore))
        action = function() {
            if (keys.value("entryId") === entry)
                action_()
        }
        open()
    }
    onClosed: action = null

    Label {
        textFormat: Text.PlainText
        objectName: "expiredName"
        text: dialog.name
        font.bold: true
        wrapMode: Text.WrapAtWordBoundaryOrAnywhere
        Layout.fillWidth: true
    }
    Notice {
        objectName: "expiredReason"
        level: 2
        text: dialog.reason
        Layout.fillWidth: true
    }
    footer: DialogButtons {
        Button {
            id: harmless
            objectName: "expiredCancel"
            text: qsTrId("trivex-app-cancel")
            focus: true
            onClicked: dialog.close()
        }
        Button {
            objectName: "expiredConfirm"
            text: qsTrId("trivex-app-expired-confirm")
            onClicked: {
                const go = dialog.action
                dialog.close()
                if (go)
                    go()
            }
        }
    }
}
