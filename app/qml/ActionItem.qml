// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15

/// An item of a menu that takes no room while it does not apply.
MenuItem {
    property bool shown: true
    visible: shown
    height: shown ? implicitHeight : 0
}
