// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto.Controls 1.0

/// The buttons below a dialog, from left to right as they are written; one below the other where
/// the dialog is too narrow for that.
Item {
    id: footer
    /// The buttons.
    default property alias buttons: grid.data
    /// What all of them take in one line.
    readonly property real lineWidth: {
        let sum = -grid.spacing
        for (let i = 0; i < grid.children.length; ++i) {
            if (grid.children[i].visible)
                sum += grid.children[i].implicitWidth + grid.spacing
        }
        return Math.max(0, sum)
    }
    /// They are one below the other.
    readonly property bool stacked: width > 0 && lineWidth > width - Theme.unit * 2
    implicitWidth: lineWidth + Theme.unit * 5
    implicitHeight: Math.max(Theme.controlHeight, grid.implicitHeight) + Theme.unit * 3.5
    // A positioner: see FillColumn.
    Grid {
        id: grid
        property var adopted: []
        x: Math.max(Theme.unit, footer.width - width - Theme.unit * 2.5)
        y: Theme.unit
        columns: footer.stacked ? 1 : Math.max(1, children.length)
        horizontalItemAlignment: Grid.AlignRight
        spacing: Theme.unit
        onChildrenChanged: {
            for (let i = 0; i < children.length; ++i) {
                const child = children[i]
                if (adopted.indexOf(child) >= 0)
                    continue
                adopted.push(child)
                child.width = Qt.binding(function() {
                    return footer.stacked
                        ? Math.min(child.implicitWidth, footer.width - Theme.unit * 3.5)
                        : child.implicitWidth
                })
            }
        }
    }
}
