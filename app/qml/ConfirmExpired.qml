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
    objectName: "confirmExpired"
    property string name
    property string reason
    property var action: null

    title: qsTrId("trivex-app-expired-title")

    /// Does `action` at once for a certificate that is valid, and after a yes for one that is not.
    function guard(certificate, action_) {
        const validity = Validity.state(certificate.notValidBefore, certificate.notValidAfter)
        if (validity !== Validity.Expired && validity !== Validity.NotYet) {
            action_()
            return
        }
        const expired = validity === Validity.Expired
        name = Texts.plain(certificate.commonName || certificate.fileName)
        reason = expired
            ? qsTrId("trivex-app-expired-text").arg(Validity.date(certificate.notValidAfter))
            : qsTrId("trivex-app-not-yet-text").arg(Validity.date(certificate.notValidBefore))
        action = action_
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
