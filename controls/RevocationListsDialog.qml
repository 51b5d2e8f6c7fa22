// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// The revocation lists among the user's own files: each can be read in full and removed, by a
/// second press.
BaseDialog {
    id: dialog
    /// The lists that are shown.
    property RevocationLists lists: RevocationLists {
        onRemoved: failure.text = problem
    }
    // internal
    property int asked: -1
    /// A value was put on the clipboard.
    signal copied()

    objectName: "revocationListsDialog"
    title: qsTrId("trivex-app-lists-title")
    onAboutToShow: {
        asked = -1
        failure.text = ""
    }
    onClosed: view.close()

    Connections {
        target: dialog.lists
        function onChanged() { dialog.asked = -1 }
    }
    FileItemDialog {
        id: view
        objectName: "listView"
        items: dialog.lists.items
        parent: dialog.parent
        onCopied: dialog.copied()
    }
    Label {
        textFormat: Text.PlainText
        text: dialog.lists.count > 0 ? qsTrId("trivex-app-lists-text")
                                     : qsTrId("trivex-app-lists-none")
        wrapMode: Text.WordWrap
        Layout.fillWidth: true
    }
    Repeater {
        model: dialog.lists.items
        Card {
            id: card
            readonly property date due: dialog.lists.due(index)
            readonly property bool removable: dialog.lists.canRemove(index)
            objectName: "listCard"
            Layout.fillWidth: true
            Label {
                objectName: "listName"
                textFormat: Text.PlainText
                text: name
                font.bold: true
                wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                Layout.fillWidth: true
            }
            Label {
                textFormat: Text.PlainText
                text: isNaN(card.due) ? qsTrId("trivex-app-lists-no-due")
                    : qsTrId("trivex-app-lists-due").replace("%1", () => Validity.date(card.due))
                color: !isNaN(card.due) && card.due < new Date() ? Theme.warn : Theme.textDim
                wrapMode: Text.WordWrap
                Layout.fillWidth: true
            }
            Label {
                textFormat: Text.PlainText
                text: qsTrId("trivex-app-lists-shared")
                visible: !card.removable
                color: Theme.textDim
                wrapMode: Text.WordWrap
                Layout.fillWidth: true
            }
            Flow {
                id: actions
                spacing: Theme.unit
                Layout.fillWidth: true
                Button {
                    objectName: "listShow"
                    text: qsTrId("trivex-app-show-details")
                    width: Math.min(implicitWidth, actions.width)
                    Accessible.name: text + ": " + name
                    onClicked: view.show(index)
                }
                Button {
                    objectName: "listRemove"
                    text: dialog.asked === index ? qsTrId("trivex-app-lists-really")
                                                 : qsTrId("trivex-app-remove")
                    width: Math.min(implicitWidth, actions.width)
                    icon.source: Theme.icon("trash")
                    flat: dialog.asked !== index
                    enabled: card.removable
                    Accessible.name: text + ": " + name
                    onClicked: {
                        failure.text = ""
                        if (dialog.asked === index)
                            dialog.lists.remove(index)
                        else
                            dialog.asked = index
                    }
                }
            }
        }
    }
    Notice {
        id: failure
        objectName: "listFailure"
        level: 3
        Layout.fillWidth: true
    }
    footer: DialogButtons {
        Button {
            objectName: "listsClose"
            text: qsTrId("trivex-app-close")
            highlighted: true
            focus: true
            onClicked: dialog.close()
        }
    }
}
