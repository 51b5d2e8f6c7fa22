// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Which key signs: one of those that can make the wanted signature.
Card {
    id: card
    property Library library
    /// Only RSA keys can.
    property bool rsaOnly: false
    property string wantedEntry
    readonly property bool chosen: keys.currentIndex >= 0
    title: qsTrId("trivex-app-step-signer")

    function value(role) {
        return keyRows.value(keys.currentIndex, role)
    }
    function selectEntry(entryId) {
        wantedEntry = entryId
        for (let i = 0; i < keyRows.count; ++i) {
            if (keyRows.value(i, "entryId") === entryId) {
                keys.currentIndex = i
                return
            }
        }
        // Never another key in the place of the one that was chosen.
        keys.currentIndex = -1
    }

    SigningKeys {
        id: fitKeys
        source: card.library.signers
        asking: card.visible
    }
    SectionedModel {
        id: keyRows
        entries: card.library.entries
        filter: fitKeys
        keyKind: card.rsaOnly ? EntryModel.RsaKind : EntryModel.NoKey
        onCountChanged: {
            if (card.wantedEntry)
                card.selectEntry(card.wantedEntry)
            else if (keys.currentIndex < 0 && count > 0)
                keys.currentIndex = 0
        }
    }
    ModelCount {
        id: signerCount
        model: card.library.signers
    }
    ComboBox {
        id: keys
        objectName: "signKeyChooser"
        model: keyRows
        textRole: "name"
        enabled: count > 0
        Accessible.name: qsTrId("trivex-app-step-signer") + ": " + currentText
        Layout.fillWidth: true
        onActivated: card.wantedEntry = keyRows.value(index, "entryId")
    }
    Label {
        textFormat: Text.PlainText
        text: card.chosen ? card.value("storeName") || "" : ""
        visible: text.length > 0
        color: Theme.textDim
        font.pixelSize: Theme.smallSize
        wrapMode: Text.WordWrap
        Layout.fillWidth: true
    }
    Label {
        textFormat: Text.PlainText
        objectName: "signKeyNote"
        text: signerCount.count === 0 ? qsTrId("trivex-app-no-key")
            : card.rsaOnly && signerCount.count - fitKeys.leftOut > keys.count
            ? qsTrId("trivex-app-only-rsa-keys")
            //% "Keys that their token cannot sign with are not listed."
            : fitKeys.leftOut > 0 ? qsTrId("trivex-app-unfit-keys")
            : ""
        visible: text.length > 0
        color: Theme.textDim
        font.pixelSize: Theme.smallSize
        wrapMode: Text.WordWrap
        Layout.fillWidth: true
    }
}
