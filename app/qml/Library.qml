// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// The models that the pages share: every row with its texts, a filter for each category, the
/// tokens and the saved requests.
Item {
    id: library
    property alias entries: entries
    property alias tokens: tokens
    property alias signers: signers
    property alias requests: requests
    property alias requestEntries: requestEntries
    property alias tokenKeys: tokenKeys
    property alias watcher: watcher
    property alias errors: errors
    readonly property var filters: ({
        personal: personal, users: users, roots: roots, others: others, system: system
    })
    readonly property Categories categories: Categories {}

    /// The saved request of this identity, null where it is gone; good until the list is made anew.
    function savedRequest(identity) {
        const row = requestEntries.rowOfIdentity(identity)
        return row < 0 ? null : Rows.value(requests, row, "certificate")
    }
    /// What is shown of the category of this key, and its `filter`; null where there is none.
    function category(key) {
        const one = categories.named(key)
        return one && Object.assign({ filter: filters[key] }, one)
    }

    EntryModel {
        id: entries
        sourceModel: KeyStoreModel
    }
    TokenListModel {
        id: tokens
        objectName: "tokens"
        entries: entries
    }
    CertificateModel {
        id: personal
        filterRole: KeyStoreModel.SmartCard
        sourceModel: entries
    }
    // The same for who signs.
    CertificateModel {
        id: signers
        filterRole: KeyStoreModel.SmartCard
        sourceModel: entries
    }
    CertificateModel {
        id: users
        filterRole: KeyStoreModel.User
        sourceModel: entries
    }
    CertificateModel {
        id: roots
        filterRole: KeyStoreModel.RootImported
        sourceModel: entries
    }
    CertificateModel {
        id: others
        filterRole: KeyStoreModel.Imported
        sourceModel: entries
    }
    CertificateModel {
        id: system
        filterRole: KeyStoreModel.System
        sourceModel: entries
    }

    CertificateRequestModel {
        id: requests
        keyStoreModel: KeyStoreModel
        Component.onCompleted: init()
    }
    EntryModel {
        id: requestEntries
        sourceModel: requests
    }
    TokenKeyModel {
        id: tokenKeys
        requests: library.requests
    }
    RequestWatcher {
        id: watcher
        requests: requests
    }
    Connections {
        target: KeyStoreModel
        function onKeyBundleWritten() {
            watcher.noteKeyBundle()
        }
    }
    TokenErrors {
        id: errors
    }
}
