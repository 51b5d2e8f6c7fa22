// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Trivex.Crypto.Controls 1.0

T.DialogButtonBox {
    id: control

    implicitWidth: contentItem.implicitWidth + leftPadding + rightPadding
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    spacing: Theme.unit
    padding: Theme.unit * 2.5
    topPadding: Theme.unit
    alignment: Qt.AlignRight
    buttonLayout: T.DialogButtonBox.GnomeLayout
    background: null

    delegate: Button {
        highlighted: T.DialogButtonBox.buttonRole === T.DialogButtonBox.AcceptRole
    }
    contentItem: ListView {
        implicitWidth: contentWidth
        implicitHeight: Theme.controlHeight
        model: control.contentModel
        spacing: control.spacing
        orientation: ListView.Horizontal
        boundsBehavior: Flickable.StopAtBounds
        snapMode: ListView.SnapToItem
    }
}
