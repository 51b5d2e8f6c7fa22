// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto.Controls 1.0

/// The buttons below a dialog, from left to right as they are written.
Item {
    id: footer
    default property alias buttons: row.data
    implicitWidth: row.implicitWidth + Theme.unit * 5
    implicitHeight: Theme.controlHeight + Theme.unit * 3.5
    // A positioner: see FillColumn.
    Row {
        id: row
        x: Math.max(Theme.unit, footer.width - width - Theme.unit * 2.5)
        y: Theme.unit
        spacing: Theme.unit
    }
}
