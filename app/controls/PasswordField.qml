// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// A field for a secret, with a button that shows it for as long as it is pressed in.
TextField {
    id: field
    echoMode: eye.checked ? TextInput.Normal : TextInput.Password
    inputMethodHints: Qt.ImhSensitiveData | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
    rightPadding: eye.width + Theme.unit
    ToolButton {
        id: eye
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        anchors.rightMargin: 2
        implicitHeight: field.height - 6
        implicitWidth: implicitHeight
        checkable: true
        icon.source: Theme.icon(checked ? "eye-off" : "eye")
        icon.width: Theme.iconSize * 0.85
        icon.height: Theme.iconSize * 0.85
        display: AbstractButton.IconOnly
        text: checked ? qsTrId("trivex-app-secret-hide") : qsTrId("trivex-app-secret-show")
    }
}
