// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

Label {
    textFormat: Text.PlainText
    font.pixelSize: Theme.smallSize
    font.bold: true
    color: Theme.textDim
    topPadding: Theme.unit * 1.5
    bottomPadding: Theme.unit * 0.5
    leftPadding: Theme.unit * 1.5
    Layout.fillWidth: true
    Accessible.role: Accessible.Heading
}
