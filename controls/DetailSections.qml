// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// Everything in a certificate, a request or a list: its values as cards, its PEM text, or its
/// structure. `groups` is what `CertificateDetails` gives.
FillColumn {
    id: sections
    /// What is shown as cards, in the form of `CertificateDetails.groups`.
    property var groups: []
    /// Called when the text is to be shown: large ones take a moment.
    property var pem: function() { return "" }
    /// Called when the ASN.1 tree is to be shown.
    property var structure: function() { return "" }
    /// Whether there is anything to be had from `pem` and `structure`.
    property bool hasEncoding: false
    /// Whether somebody answers `pdfAsked` and `printAsked`.
    property bool printable: false
    /// What is shown: 0 the values, 1 the PEM text, 2 the structure.
    property int current: 0
    /// More rows than can be made without a pause in the window's drawing.
    readonly property bool crowded: rowsIn(groups) > 80
    /// A value has been copied.
    signal copied()
    /// The values are to be saved as a document, or printed.
    signal pdfAsked()
    /// The values are to be printed.
    signal printAsked()

    spacing: Theme.unit * 1.5

    /// How many rows a list of groups has.
    function rowsIn(list) {
        let count = 0
        for (let i = 0; list && i < list.length; ++i)
            count += list[i].rows.length
        return count
    }
    /// Shows one of the three, by its number.
    function show(which) {
        current = which
    }
    Flow {
        spacing: Theme.unit / 2
        visible: sections.hasEncoding
        Layout.fillWidth: true
        Repeater {
            model: [["detailsTab", qsTrId("trivex-app-details")], ["pemTab", "PEM"],
                    ["structureTab", qsTrId("trivex-app-structure")]]
            ToolButton {
                objectName: modelData[0]
                text: modelData[1]
                checkable: true
                checked: sections.current === index
                onClicked: {
                    sections.current = index
                    checked = Qt.binding(function() { return sections.current === index })
                }
                Accessible.role: Accessible.PageTab
            }
        }
        ToolButton {
            objectName: "pdfButton"
            text: qsTrId("trivex-app-save-pdf")
            icon.source: Theme.icon("file")
            display: AbstractButton.IconOnly
            visible: sections.printable
            onClicked: sections.pdfAsked()
        }
        ToolButton {
            objectName: "printButton"
            text: qsTrId("trivex-app-print")
            icon.source: Theme.icon("print")
            display: AbstractButton.IconOnly
            visible: sections.printable
            onClicked: sections.printAsked()
        }
    }
    Repeater {
        model: sections.current === 0 ? sections.groups : []
        Loader {
            readonly property var group: modelData
            asynchronous: sections.crowded
            sourceComponent: groupCard
            Layout.fillWidth: true
        }
    }
    Component {
        id: groupCard
        Card {
            title: group.title ? group.title : qsTrId("trivex-app-general")
            Repeater {
                model: group.rows
                DetailRow {
                    label: modelData.label
                    value: modelData.value
                    fixedWidth: modelData.fixed === true
                    flag: modelData.flag ? modelData.flag : ""
                    onCopied: sections.copied()
                    Layout.fillWidth: true
                }
            }
        }
    }
    Repeater {
        model: sections.current > 0 ? 1 : 0
        Card {
            title: sections.current === 1 ? "PEM" : qsTrId("trivex-app-structure")
            Layout.fillWidth: true
            DetailRow {
                objectName: "encodedText"
                value: sections.current === 1 ? sections.pem() : sections.structure()
                fixedWidth: true
                wordless: sections.current === 1
                visible: value.length > 0
                onCopied: sections.copied()
                Layout.fillWidth: true
            }
            Label {
                textFormat: Text.PlainText
                text: qsTrId("trivex-app-too-large-to-show")
                wrapMode: Text.WordWrap
                visible: sections.current === 1 && sections.pem().length === 0
                Layout.fillWidth: true
            }
        }
    }
}
