// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Colours and text size, which follow the system until chosen here; whether tokens are remembered.
BaseDialog {
    id: dialog
    objectName: "settingsDialog"
    title: qsTrId("trivex-app-settings")
    preferredWidth: Theme.fontSize * 26
    readonly property RememberedTokens remembered: RememberedTokens { }
    // internal
    property bool kept: true
    onAboutToShow: kept = Files.settingsAreKept()

    Label {
        textFormat: Text.PlainText
        text: qsTrId("trivex-app-colours")
        color: Theme.textDim
        font.pixelSize: Theme.smallSize
    }
    Repeater {
        model: [qsTrId("trivex-app-colours-system"), qsTrId("trivex-app-colours-light"),
                qsTrId("trivex-app-colours-dark")]
        RadioButton {
            objectName: "colours-" + index
            text: modelData
            checked: Theme.mode === index
            onClicked: Theme.mode = index
        }
    }
    Label {
        textFormat: Text.PlainText
        text: qsTrId("trivex-app-text-size")
        color: Theme.textDim
        font.pixelSize: Theme.smallSize
    }
    ComboBox {
        textRole: "text"
        model: [1, 1.15, 1.3, 1.6, 2].map(function(scale) {
            return { text: Math.round(scale * 100) + " %", scale: scale }
        })
        currentIndex: Math.max(0, model.findIndex(function(one) {
            return Math.abs(one.scale - Theme.textScale) < 0.01
        }))
        onActivated: Theme.textScale = model[index].scale
        Accessible.name: qsTrId("trivex-app-text-size") + ": " + currentText
        Layout.fillWidth: true
    }
    WrappedCheckBox {
        objectName: "rememberTokens"
        text: qsTrId("trivex-app-remember-tokens")
        checked: dialog.remembered.on
        onToggled: dialog.remembered.on = checked
        Layout.fillWidth: true
    }
    Label {
        textFormat: Text.PlainText
        text: qsTrId("trivex-app-remember-tokens-hint")
        color: Theme.textDim
        font.pixelSize: Theme.smallSize
        wrapMode: Text.Wrap
        Layout.fillWidth: true
    }
    Label {
        objectName: "rememberTokensProblem"
        visible: !dialog.remembered.saved
        textFormat: Text.PlainText
        text: qsTrId("trivex-app-settings-not-saved")
        color: Theme.bad
        font.pixelSize: Theme.smallSize
        wrapMode: Text.Wrap
        Accessible.role: Accessible.AlertMessage
        Layout.fillWidth: true
    }
    Notice {
        objectName: "settingsNotKept"
        level: 2
        text: dialog.kept ? "" : qsTrId("trivex-app-settings-not-kept")
        Layout.fillWidth: true
    }
    footer: DialogButtons {
        Button {
            text: qsTrId("trivex-app-close")
            highlighted: true
            onClicked: dialog.close()
        }
    }
}
