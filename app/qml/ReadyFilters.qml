// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto.Tools 1.0

/// The ready filters of each page, remembered while the window lives, and put on the list that the
/// pages share.
QtObject {
    id: filters
    property SectionedModel rows
    property TokenListModel tokens
    property string key
    property var kept: ({})
    readonly property bool active: rows.wantedValidity !== Validity.Unknown || rows.onlyWithKeys
        || rows.wantedStore !== ""
    /// The name of the token that was chosen; it is known when the token has gone, too.
    property string tokenName
    /// What is in force, in words.
    readonly property string words: [
        rows.wantedValidity !== Validity.Unknown ? Validity.word(rows.wantedValidity) : "",
        rows.onlyWithKeys ? qsTrId("trivex-app-filter-keys") : "",
        rows.wantedStore ? tokenName : ""].filter(function(part) { return part }).join(", ")

    function leaveFor(next) {
        kept[key] = { validity: rows.wantedValidity, keys: rows.onlyWithKeys,
                      store: rows.wantedStore, name: tokenName }
        key = next
        const wanted = kept[next] || { validity: Validity.Unknown, keys: false, store: "", name: "" }
        tokenName = wanted.name
        rows.wantedValidity = wanted.validity
        rows.onlyWithKeys = wanted.keys
        rows.wantedStore = wanted.store
    }
    /// The same once more lifts it.
    function toggleValidity(state) {
        rows.wantedValidity = rows.wantedValidity === state ? Validity.Unknown : state
    }
    function toggleKeys() {
        rows.onlyWithKeys = !rows.onlyWithKeys
    }
    function toggleToken(storeId, name) {
        tokenName = name
        rows.wantedStore = rows.wantedStore === storeId ? "" : storeId
    }
}
