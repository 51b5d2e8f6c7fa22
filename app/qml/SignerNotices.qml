// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// What was found out about each signature of a document: a box for each, with its verdict.
FillColumn {
    id: notices
    /// A `SignerList`.
    property var signatures
    spacing: Theme.unit

    /// Names are strangers' and may hold marks, too: both are put in at once.
    function who(name, issuer) {
        if (!name)
            return issuer ? qsTrId("trivex-app-signer-issuer-only").arg(Texts.plain(issuer)) : ""
        return qsTrId("trivex-app-signer-who").replace(
            /%([12])/g, (mark, number) => Texts.plain(number === "1" ? name : issuer))
    }
    function when(time) {
        return isNaN(time.getTime()) ? "" : qsTrId("trivex-app-signer-when").arg(
            Validity.dateTime(time))
    }

    Repeater {
        model: notices.signatures
        Notice {
            objectName: "signerResult" + index
            level: model.level
            text: model.headline
            detail: [notices.who(model.name, model.issuer), notices.when(model.time), model.advice]
                .filter(function(line) { return line }).join("\n")
            Layout.fillWidth: true
        }
    }
}
