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
        const at = KeyStoreModel.index(index, 0)
        return {
            name: KeyStoreModel.data(at, 257),
            entry: KeyStoreModel.data(at, 258),
            certificate: KeyStoreModel.data(at, 259),
            issuer: KeyStoreModel.data(at, 260),
            type: KeyStoreModel.data(at, 261),
            id: KeyStoreModel.data(at, 262)
        }
    }

    function rows(type) {
        const found = []
        for (let i = 0; i < KeyStoreModel.rowCount(); ++i) {
            if (KeyStoreModel.data(KeyStoreModel.index(i, 0), 261) === type)
                found.push(row(i))
        }
        return found
    }

    function count(type) {
        let number = 0
        for (let i = 0; i < KeyStoreModel.rowCount(); ++i)
            number += KeyStoreModel.data(KeyStoreModel.index(i, 0), 261) === type ? 1 : 0
        return number
    }

    function find(type, name) {
        return rows(type).find(row => row.name === name)
    }

    function locations() {
        const names = []
        const model = KeyStoreModel.certLocation
        for (let i = 0; i < model.rowCount(); ++i)
            names.push(model.data(model.index(i, 0), 259))
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
