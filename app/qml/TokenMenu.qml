// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// What can be done to the token of a page. How it ends is told by the page.
Button {
    id: button
    property Item host
    /// Whether there is room for its text.
    property bool wide: true
    readonly property string storeId: host.storeId

    function open(dialog) {
        dialog.active = true
        dialog.item.ask(storeId)
    }
    objectName: "tokenMenuButton"
    text: qsTrId("trivex-app-token-menu")
    icon.source: Theme.icon("token")
    display: wide ? AbstractButton.TextBesideIcon : AbstractButton.IconOnly
    visible: storeId.length > 0 && admin.present
    onClicked: menu.popup(button, 0, button.height)
    Accessible.name: text
    ToolTip.text: text
    ToolTip.visible: display === AbstractButton.IconOnly && hovered

    TokenAdmin {
        id: admin
        storeId: button.storeId
    }
    Menu {
        id: menu
        objectName: "tokenMenu"
        title: button.text
        ActionItem {
            objectName: "tokenChangePin"
            text: qsTrId("trivex-app-change-pin")
            icon.source: Theme.icon("key")
            shown: admin.pinSet && !admin.locked
            onTriggered: button.open(changePin)
        }
        ActionItem {
            objectName: "tokenUnblock"
            text: admin.pinSet ? qsTrId("trivex-app-unblock-pin") : qsTrId("trivex-app-set-pin")
            icon.source: Theme.icon("lock")
            onTriggered: button.open(unblock)
        }
        ActionItem {
            objectName: "tokenChangeOfficerPin"
            text: qsTrId("trivex-app-change-officer-pin")
            icon.source: Theme.icon("shield")
            onTriggered: button.open(changeOfficerPin)
        }
        MenuSeparator {}
        ActionItem {
            objectName: "tokenInitialise"
            text: qsTrId("trivex-app-initialise")
            icon.source: Theme.icon("trash")
            shown: !admin.readOnly
            onTriggered: button.open(initialise)
        }
    }
    Loader {
        id: changePin
        active: false
        sourceComponent: ChangePinDialog {
            onDone: button.host.told(text)
            onFailed: button.host.failed(cause, advice)
        }
    }
    Loader {
        id: changeOfficerPin
        active: false
        sourceComponent: ChangePinDialog {
            objectName: "changeOfficerPinDialog"
            officer: true
            onDone: button.host.told(text)
            onFailed: button.host.failed(cause, advice)
        }
    }
    Loader {
        id: unblock
        active: false
        sourceComponent: UnblockDialog {
            onDone: button.host.told(text)
            onFailed: button.host.failed(cause, advice)
        }
    }
    Loader {
        id: initialise
        active: false
        sourceComponent: InitialiseDialog {
            onDone: button.host.told(text)
            onFailed: button.host.failed(cause, advice)
        }
    }
}
