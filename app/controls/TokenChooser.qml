// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// Chooses a token among the locations that the key store model offers, and says how it is.
FillColumn {
    id: chooser
    property alias model: box.model
    property alias currentIndex: box.currentIndex
    property alias info: info
    readonly property string tokenName: box.currentText
    property string label: qsTrId("trivex-app-token")
    readonly property bool usable: box.currentIndex >= 0 && info.present && !info.readOnly
    spacing: 3
    TokenInfo {
        id: info
        storeName: box.currentText
    }
    Label {
        text: chooser.label
        color: Theme.textDim
        font.pixelSize: Theme.smallSize
    }
    ComboBox {
        id: box
        objectName: "tokenChooser"
        textRole: "type"
        enabled: count > 0
        Layout.fillWidth: true
        Accessible.name: chooser.label + ": " + currentText
    }
    Label {
        readonly property string state: box.count === 0 ? qsTrId("trivex-app-no-token")
            : !info.present ? qsTrId("trivex-app-token-absent")
            : info.readOnly ? qsTrId("trivex-app-token-read-only")
            : info.busy ? info.busyText : info.pinText
        text: state
        visible: text.length > 0
        color: Theme.warn
        font.pixelSize: Theme.smallSize
        wrapMode: Text.WordWrap
        Layout.fillWidth: true
    }
}
