// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// Says what went wrong and what to do next; offers a report without secrets.
BaseDialog {
    id: dialog
    property string cause
    property string advice
    property string report
    /// The report of this error is on the clipboard.
    property bool copied: false

    objectName: "errorDialog"
    title: qsTrId("trivex-app-error-title")

    function show(cause_, advice_, report_) {
        cause = cause_
        advice = advice_
        report = report_ ? report_ : ""
        copied = false
        open()
    }

    RowLayout {
        spacing: Theme.unit * 1.5
        Layout.fillWidth: true
        Icon {
            name: "error"
            color: Theme.bad
            size: Theme.iconSize * 1.6
            Layout.alignment: Qt.AlignTop
        }
        ColumnLayout {
            Layout.fillWidth: true
            Label {
                textFormat: Text.PlainText
                objectName: "errorCause"
                text: dialog.cause
                font.bold: true
                wrapMode: Text.WordWrap
                Layout.fillWidth: true
            }
            Label {
                textFormat: Text.PlainText
                objectName: "errorAdvice"
                text: dialog.advice
                wrapMode: Text.WordWrap
                Layout.fillWidth: true
            }
        }
    }
    footer: DialogButtons {
        Button {
            objectName: "errorReport"
            text: dialog.copied ? qsTrId("trivex-app-copied") : qsTrId("trivex-app-copy-report")
            icon.source: Theme.icon(dialog.copied ? "check" : "copy")
            flat: true
            visible: dialog.report.length > 0
            onClicked: {
                Desktop.copy(dialog.report)
                dialog.copied = true
            }
        }
        Button {
            objectName: "errorClose"
            text: qsTrId("trivex-app-close")
            highlighted: true
            focus: true
            onClicked: dialog.close()
        }
    }
}
