// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15

/// The page of a new request. A key without its request outlives a look at another page.
Loader {
    id: loader
    property bool shown: false
    property bool unfinished: false
    property int columns: 3
    signal menuAsked()
    signal failed(string cause, string advice)
    signal savedUnseen()
    signal told(string text)

    active: visible || unfinished
    visible: shown
    focus: visible

    function generationEnded() {
        if (item)
            item.generationEnded()
    }
    function startOver() {
        unfinished = false
        active = false
        active = Qt.binding(function() { return visible || unfinished })
        if (item)
            item.focusFirst()
    }

    /// A request for a key that is there. While another one is made, that goes first.
    function useKey(storeId, keyId, name) {
        if (item && item.busy) {
            failed(qsTrId("trivex-app-request-busy"), qsTrId("trivex-app-request-busy-advice"))
            return
        }
        if (unfinished)
            startOver()
        item.useKey(storeId, keyId, name)
    }

    sourceComponent: Component {
        NewRequestPage {
            objectName: "newRequestPage"
            columns: loader.columns
            onMenuAsked: loader.menuAsked()
            onFailed: loader.failed(cause, advice)
            onUnfinishedChanged: loader.unfinished = unfinished
            onSavedPathChanged: if (!loader.visible) loader.savedUnseen()
            onStartOverAsked: loader.startOver()
            onTold: loader.told(text)
        }
    }
}
