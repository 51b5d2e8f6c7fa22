// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// How many rows a category has, and how many of them end soon, whatever is being searched in it.
QtObject {
    id: counter
    property CertificateModel filter
    property int count: 0
    property int expiring: 0
    property ModelCount shown: ModelCount {
        model: counter.filter
        onCountChanged: if (!counter.filter.pattern) counter.count = count
    }
    property ModelCount ending: ModelCount {
        model: counter.filter
        role: "validity"
        value: Validity.Expiring
        onCountChanged: if (!counter.filter.pattern) counter.expiring = count
    }
    // Certificates come to their end while the window is open.
    property Timer clock: Timer {
        interval: 600000
        repeat: true
        running: true
        onTriggered: counter.ending.recount()
    }
    property Connections watch: Connections {
        target: counter.filter
        function onPatternChanged() {
            if (!counter.filter.pattern) {
                counter.count = counter.filter.rowCount()
                counter.ending.recount()
            }
        }
    }
    Component.onCompleted: count = filter ? filter.rowCount() : 0
}
