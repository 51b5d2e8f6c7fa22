// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto 1.0

// The key store model's rows as plain values, and its answers as counters.
Item {
    readonly property var typeNames: ({
        0: "System", 1: "User", 2: "Application", 3: "SmartCard", 4: "PGPKeyring"
    })
    property int written: 0
    property int notWritten: 0
    property int removed: 0
    property int notRemoved: 0
    property int pinsAsked: 0
    // What the interactive handler answers with; empty: it declines.
    property string pin: toolbox.pin
    readonly property alias signer: signVerify

    function row(index) {
        const value = role => toolbox.value(KeyStoreModel, index, role)
        return {
            name: value("name"),
            entry: value("keyStoreEntry"),
            certificate: value("certificate"),
            issuer: value("issuer"),
            type: value("type"),
            id: value("entryId")
        }
    }

    function rows(type) {
        const found = []
        for (let i = 0; i < KeyStoreModel.rowCount(); ++i) {
            if (toolbox.value(KeyStoreModel, i, "type") === type)
                found.push(row(i))
        }
        return found
    }

    function count(type) {
        let number = 0
        for (let i = 0; i < KeyStoreModel.rowCount(); ++i)
            number += toolbox.value(KeyStoreModel, i, "type") === type ? 1 : 0
        return number
    }

    function find(type, name) {
        return rows(type).find(row => row.name === name)
    }

    function locations() {
        const names = []
        const model = KeyStoreModel.certLocation
        for (let i = 0; i < model.rowCount(); ++i)
            names.push(toolbox.value(model, i, "type"))
        return names
    }

    Connections {
        target: KeyStoreModel
        function onEntryWrittenChanged(isEmpty) {
            if (isEmpty)
                ++notWritten
            else
                ++written
        }
        function onEntryRemovedChanged(success) {
            if (success)
                ++removed
            else
                ++notRemoved
        }
    }

    SignVerify {
        id: signVerify
        onGetPin: {
            ++pinsAsked
            if (pin === "")
                pinRejected()
            else
                pinAccepted(pin)
        }
    }
}
