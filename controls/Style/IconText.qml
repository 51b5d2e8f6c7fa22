// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls.impl 2.15

/// What stands in a button or a row: an icon, a text, or both. Unlike IconLabel it shows every text
/// letter by letter: names that others wrote stand in it, and IconLabel would take a tag for rich
/// text and an ampersand for a mnemonic.
Item {
    id: content
    property var icon
    property string text
    property alias font: label.font
    property color color
    property int display: T.AbstractButton.TextBesideIcon
    property int alignment: Qt.AlignCenter
    property bool mirrored: false
    property real spacing: 0

    readonly property bool hasIcon: display !== T.AbstractButton.TextOnly && !!icon
        && (icon.name.length > 0 || icon.source.toString().length > 0)
    readonly property bool hasText: display !== T.AbstractButton.IconOnly && text.length > 0
    readonly property bool isColumn: display === T.AbstractButton.TextUnderIcon
    readonly property real gap: hasIcon && hasText ? spacing : 0
    readonly property real iconWidth: hasIcon ? icon.width : 0
    readonly property real iconHeight: hasIcon ? icon.height : 0
    /// Asked for from the beginning: a text that is without width when it is asked first has none.
    readonly property real naturalWidth: label.implicitWidth
    readonly property real besideIcon: isColumn ? 0 : iconWidth + gap
    readonly property real textWidth: hasText
        ? Math.min(naturalWidth, Math.max(0, width - besideIcon)) : 0
    /// Where a line of both begins.
    readonly property real firstX: {
        const room = width - besideIcon - textWidth
        return !(alignment & Qt.AlignLeft) ? room / 2 : mirrored ? room : 0
    }
    /// Where a column of both begins.
    readonly property real firstY:
        (height - iconHeight - gap - (hasText ? label.implicitHeight : 0)) / 2

    implicitWidth: isColumn ? Math.max(iconWidth, hasText ? naturalWidth : 0)
        : iconWidth + gap + (hasText ? naturalWidth : 0)
    implicitHeight: isColumn ? iconHeight + gap + (hasText ? label.implicitHeight : 0)
        : Math.max(iconHeight, hasText ? label.implicitHeight : 0)

    IconImage {
        id: image
        visible: content.hasIcon
        name: content.icon ? content.icon.name : ""
        source: content.icon ? content.icon.source : ""
        color: content.icon ? content.icon.color : "transparent"
        width: content.iconWidth
        height: content.iconHeight
        sourceSize: Qt.size(width, height)
        x: content.isColumn ? (content.width - width) / 2
            : content.mirrored ? content.firstX + content.textWidth + content.gap : content.firstX
        y: content.isColumn ? content.firstY : (content.height - content.iconHeight) / 2
    }
    Text {
        id: label
        textFormat: Text.PlainText
        visible: content.hasText
        text: content.text
        color: content.color
        elide: Text.ElideRight
        width: content.textWidth
        x: content.isColumn ? (content.width - width) / 2
            : content.mirrored ? content.firstX : content.firstX + content.iconWidth + content.gap
        y: content.isColumn ? content.firstY + content.iconHeight + content.gap
            : (content.height - height) / 2
        Accessible.ignored: true
    }
}
