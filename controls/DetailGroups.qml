// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// A card for each group of labelled values.
FillColumn {
    id: view
    /// What is shown, in the form of `CertificateDetails.groups`.
    property var groups: []
    spacing: Theme.unit * 1.5
    Repeater {
        model: view.groups
        Card {
            title: modelData.title ? modelData.title : ""
            Layout.fillWidth: true
            Repeater {
                model: modelData.rows
                DetailRow {
                    label: modelData.label
                    value: modelData.value
                    fixedWidth: modelData.fixed === true
                    flag: modelData.flag ? modelData.flag : ""
                    Layout.fillWidth: true
                }
            }
        }
    }
}
