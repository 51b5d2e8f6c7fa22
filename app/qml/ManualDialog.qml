// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0

/// The manual, one section at a time. It is the document that is installed beside the program, too.
BaseDialog {
    id: dialog
    objectName: "manualDialog"
    title: qsTrId("trivex-app-manual")
    preferredWidth: Theme.fontSize * 52
    /// The whole document, in HTML.
    property string manual
    /// Title and text of each section: what follows a heading of the second order.
    readonly property var sections: manual.split("<h2>").slice(1).map(function(part) {
        const end = part.indexOf("</h2>")
        return { title: part.slice(0, end), text: part.slice(end + 5) }
    })
    /// Pictures are never wider than the page.
    readonly property real pictureWidth: Math.max(100, Math.min(560, page.width - Theme.unit))
    signal keysAsked()

    ComboBox {
        id: chooser
        objectName: "manualSections"
        focus: true
        model: dialog.sections
        textRole: "title"
        Accessible.name: qsTrId("trivex-app-manual-section")
        Layout.fillWidth: true
    }
    // Our own text, the only one here that is read as HTML.
    TextEdit {
        id: page
        objectName: "manualText"
        textFormat: TextEdit.RichText
        text: chooser.currentIndex < 0 || !dialog.visible ? ""
            : dialog.sections[chooser.currentIndex].text
                .replace(/width="560"/g, "width=\"" + Math.round(dialog.pictureWidth) + "\"")
        baseUrl: "qrc:/trivex/manual/"
        readOnly: true
        selectByMouse: true
        activeFocusOnTab: true
        wrapMode: TextEdit.Wrap
        color: Theme.text
        selectionColor: Theme.accent
        selectedTextColor: Theme.accentText
        font.pixelSize: Theme.fontSize
        Accessible.role: Accessible.EditableText
        Accessible.readOnly: true
        Accessible.name: chooser.displayText
        Layout.fillWidth: true
    }
    footer: DialogButtons {
        Button {
            objectName: "manualKeys"
            text: qsTrId("trivex-app-help")
            onClicked: {
                dialog.close()
                dialog.keysAsked()
            }
        }
        Button {
            objectName: "manualClose"
            text: qsTrId("trivex-app-close")
            highlighted: true
            onClicked: dialog.close()
        }
    }
}
