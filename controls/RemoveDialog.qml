// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Asks before something is removed: names it, and says when a key goes for good. `name` has a line
/// for each where several go; `more` are not named.
BaseDialog {
    id: dialog
    /// How many are removed.
    property int count: 1
    /// The name of what is removed, or of several, a line each.
    property string name
    /// How many are not named.
    property int more: 0
    /// Where they lie.
    property string place
    /// A private key goes with it, for good.
    property bool hasKey: false
    /// It is a saved request.
    property bool isRequest: false
    /// Only keys without a certificate go.
    property bool isKey: false
    /// The names of requests that wait for the certificates of keys that go.
    property string requests
    /// They are to be removed.
    signal confirmed()

    initialFocus: harmless
    objectName: "removeDialog"
    title: isKey ? qsTrId("trivex-app-remove-keys-title", count) : count > 1
        ? isRequest ? qsTrId("trivex-app-remove-requests-title", count)
                    : qsTrId("trivex-app-remove-several-title", count)
        : isRequest ? qsTrId("trivex-app-remove-request-title")
                    : qsTrId("trivex-app-remove-title")

    Label {
        textFormat: Text.PlainText
        text: dialog.more > 0 ? dialog.name + "\n" + qsTrId("trivex-app-and-more", dialog.more)
                              : dialog.name
        font.bold: true
        wrapMode: Text.WrapAtWordBoundaryOrAnywhere
        Layout.fillWidth: true
    }
    Label {
        textFormat: Text.PlainText
        text: Texts.put(dialog.isKey ? qsTrId("trivex-app-remove-keys-text", dialog.count) : dialog.count > 1
            ? dialog.isRequest ? qsTrId("trivex-app-remove-requests-text")
                : dialog.hasKey ? qsTrId("trivex-app-remove-bundles-text")
                : qsTrId("trivex-app-remove-several-text")
            : dialog.isRequest ? qsTrId("trivex-app-remove-request-text")
                : dialog.hasKey ? qsTrId("trivex-app-remove-bundle-text")
                : qsTrId("trivex-app-remove-text"), [dialog.place])
        wrapMode: Text.WordWrap
        Layout.fillWidth: true
    }
    Notice {
        level: 3
        text: dialog.hasKey ? qsTrId("trivex-app-remove-key-warning") : ""
        Layout.fillWidth: true
    }
    Notice {
        objectName: "removeRequestsNotice"
        level: 3
        text: dialog.requests
            ? Texts.put(qsTrId("trivex-app-remove-key-request"), [dialog.requests]) : ""
        Layout.fillWidth: true
    }
    footer: DialogButtons {
        Button {
            id: harmless
            objectName: "removeCancel"
            text: qsTrId("trivex-app-cancel")
            focus: true
            onClicked: dialog.close()
        }
        Button {
            objectName: "removeConfirm"
            text: qsTrId("trivex-app-remove-confirm")
            icon.source: Theme.icon("trash")
            onClicked: {
                dialog.close()
                dialog.confirmed()
            }
        }
    }
}
