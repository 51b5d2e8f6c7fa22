// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// Says what went wrong and what to do next; offers a report without secrets. One error after the
/// other, each until it is closed.
BaseDialog {
    id: dialog
    /// What went wrong, as a sentence.
    property string cause
    /// What to do next, as a sentence.
    property string advice
    /// What "Copy report" puts on the clipboard; the button is hidden while it is empty.
    property string report
    /// The report of this error is on the clipboard.
    property bool copied: false
    /// True while something else must not be covered, such as a question that is being answered:
    /// errors wait until then.
    property bool held: false
    /// The errors that follow when this one is closed.
    property var waiting: []

    objectName: "errorDialog"
    title: qsTrId("trivex-app-error-title")

    /// Shows an error now, or after the one that is shown. The report may be left out.
    function show(cause_, advice_, report_) {
        waiting.push({"cause": cause_, "advice": advice_, "report": report_ ? report_ : ""})
        showNext()
    }
    // internal
    function showNext() {
        if (held || visible || waiting.length === 0)
            return
        const error = waiting.shift()
        cause = error.cause
        advice = error.advice
        report = error.report
        copied = false
        open()
    }
    onHeldChanged: Qt.callLater(showNext)
    onClosed: Qt.callLater(showNext)

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
