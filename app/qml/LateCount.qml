// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15

/// The number of rows of a model that may not be there yet. What counts them, `source`, is loaded
/// with the first model: it takes Trivex.Crypto.Tools, which the first frame does without.
Loader {
    id: late
    property QtObject model: null
    readonly property int count: item ? item.count : 0
    readonly property int expiring: item ? item.expiring : 0
    active: model !== null
    visible: false
    onLoaded: item.model = Qt.binding(function() { return late.model })
}
