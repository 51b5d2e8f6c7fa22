// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Trivex.Crypto.Controls 1.0

T.ScrollView {
    id: control
    implicitWidth: contentWidth + leftPadding + rightPadding
    implicitHeight: contentHeight + topPadding + bottomPadding
    ScrollBar.vertical: ScrollBar {
        parent: control
        x: control.width - width
        height: control.height
        active: control.ScrollBar.horizontal.active
    }
    ScrollBar.horizontal: ScrollBar {
        parent: control
        y: control.height - height
        width: control.width
        active: control.ScrollBar.vertical.active
    }
}
