// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Window 2.15
import Trivex.Crypto 1.0

Window {
    visible: true
    width: 480
    height: 640
    ListView {
        objectName: "list"
        anchors.fill: parent
        model: CertificateModel {
            sourceModel: KeyStoreModel
            filterRole: KeyStoreModel.SmartCard // with a key; System: those of the system
            searchRoles: ["name", "issuer"]
        }
        delegate: Text { textFormat: Text.PlainText; text: model.name + ", of " + model.issuer }
        onCountChanged: console.log(count, "certificates")
    }
}
