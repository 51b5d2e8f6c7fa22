// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// How many rows a category has, whatever is being searched in it.
QtObject {
    id: counter
    property CertificateModel filter
    property int count: 0
    property ModelCount shown: ModelCount {
        model: counter.filter
        onCountChanged: if (!counter.filter.pattern) counter.count = count
    }
    property Connections watch: Connections {
        target: counter.filter
        function onPatternChanged() {
            if (!counter.filter.pattern)
                counter.count = counter.filter.rowCount()
        }
    }
    Component.onCompleted: count = filter ? filter.rowCount() : 0
}
