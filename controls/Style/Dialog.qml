// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Trivex.Crypto.Controls 1.0

T.Dialog {
    id: control

    implicitWidth: Math.max(contentWidth + leftPadding + rightPadding, implicitHeaderWidth,
                            implicitFooterWidth)
    implicitHeight: contentHeight + topPadding + bottomPadding
        + (implicitHeaderHeight > 0 ? implicitHeaderHeight + spacing : 0)
        + (implicitFooterHeight > 0 ? implicitFooterHeight + spacing : 0)
    padding: Theme.unit * 2.5
    topPadding: Theme.unit
    bottomPadding: Theme.unit

    background: Rectangle {
        radius: Theme.radius + 4
        color: Theme.card
        border.color: Theme.border
    }
    header: Label {
        textFormat: Text.PlainText
        text: control.title
        visible: control.title.length > 0
        elide: Label.ElideRight
        padding: Theme.unit * 2.5
        bottomPadding: Theme.unit
        font.pixelSize: Theme.headingSize
        font.bold: true
        Accessible.role: Accessible.Heading
    }
    footer: DialogButtonBox {
        visible: count > 0
    }
    T.Overlay.modal: Rectangle { color: Theme.shade }
    T.Overlay.modeless: Rectangle { color: "transparent" }
}
