// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Trivex.Crypto.Controls 1.0

T.ScrollIndicator {
    id: control
    implicitWidth: 8
    implicitHeight: 8
    padding: 2
    visible: size < 1
    contentItem: Rectangle {
        radius: 2
        color: Theme.fieldBorder
    }
}
