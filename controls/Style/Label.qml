// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Trivex.Crypto.Controls 1.0

T.Label {
    textFormat: Text.PlainText
    color: Theme.text
    linkColor: Theme.link
    font.pixelSize: Theme.fontSize
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
