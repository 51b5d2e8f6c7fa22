// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// What the certificate of a request is to be used for, in both lists that a certificate has.
FillColumn {
    id: usages
    /// A `KeyRequest`, which knows the usages and what people call them.
    property QtObject request
    property var keyUsages: []
    property var purposes: []
    signal keyUsagesEdited(var chosen)
    signal purposesEdited(var chosen)
    spacing: Theme.unit

    UsageFields {
        label: qsTrId("trivex-app-usages")
        names: usages.request.knownKeyUsages()
        chosen: usages.keyUsages
        title: usages.request.title
        onEdited: usages.keyUsagesEdited(chosen)
        Layout.fillWidth: true
    }
    UsageFields {
        label: qsTrId("trivex-app-purposes")
        names: usages.request.knownPurposes()
        chosen: usages.purposes
        title: usages.request.title
        onEdited: usages.purposesEdited(chosen)
        Layout.fillWidth: true
    }
}
