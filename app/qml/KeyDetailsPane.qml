// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// The chosen key without a certificate.
KeyDetails {
    id: pane
    property RowSelection selection
    signal copied()

    objectName: "keyDetails"
    name: key.name
    place: key.storeName
    groups: key.groups
    request: key.request
    canRequest: key.canRequest
    canRemove: key.present && !token.readOnly
    busy: token.busy
    onCopyAsked: {
        Desktop.copy(key.text())
        copied()
    }
    TokenKeyInfo {
        id: key
        keys: pane.selection.rows ? pane.selection.rows.keys : null
        identity: pane.selection.identity
    }
    TokenInfo {
        id: token
        storeId: key.storeId
    }
}
