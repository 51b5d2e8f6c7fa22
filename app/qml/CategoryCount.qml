// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// How many rows a category has, and how many of them end soon.
QtObject {
    id: counter
    property QtObject model: null
    readonly property int count: shown.count
    readonly property int expiring: ending.count
    property ModelCount shown: ModelCount {
        model: counter.model
    }
    property ModelCount ending: ModelCount {
        model: counter.model
        role: "validity"
        value: Validity.Expiring
    }
    // Certificates come to their end while the window is open.
    property Timer clock: Timer {
        interval: 600000
        repeat: true
        running: true
        onTriggered: counter.ending.recount()
    }
}
