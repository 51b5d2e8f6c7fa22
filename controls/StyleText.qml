// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15

/// What the style of the application writes with.
Label {
    textFormat: Text.PlainText
}
