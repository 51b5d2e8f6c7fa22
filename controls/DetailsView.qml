// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// The details of one certificate: a header with its actions and a card for each group.
/// `groups` is what `CertificateDetails` gives; made of plain maps in the gallery.
FormPage {
    id: view
    property var groups: []
    property alias header: header
    endSpace: Theme.unit * 3
    Accessible.name: qsTrId("trivex-app-details")

    CertificateHeader {
        id: header
        Layout.fillWidth: true
    }
    Repeater {
        model: view.groups
        Card {
            title: modelData.title ? modelData.title : qsTrId("trivex-app-general")
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
