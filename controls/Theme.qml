// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
pragma Singleton
import QtQuick 2.15
import Trivex.Crypto.Controls 1.0

/// Colours and measures of all components, in a light and a dark set.
///
/// `mode` is 0 (as the application's style, or as the system's palette under ours), 1 (light) or 2 (dark); `textScale` enlarges all text on
/// top of the system's font size. Every pair in `pairs` keeps a contrast of at least 4.5:1.
QtObject {
    id: theme

    /// 0 as the style or the system's palette, 1 light, 2 dark.
    property int mode: 0
    /// What all text is enlarged by; 1 is the system's size.
    property real textScale: 1

    // internal
    readonly property SystemPalette system: SystemPalette {}
    // What a style writes stands on our grounds, and it may be light or dark whatever the palette is.
    // internal
    readonly property Loader styleText: Loader {
        active: !Desktop.hasOwnStyle
        source: "StyleText.qml"
    }
    // internal
    readonly property bool systemDark: styleText.item ? styleText.item.color.hslLightness > 0.5
                                                      : system.window.hslLightness < 0.5
    /// The dark set is in force.
    readonly property bool dark: mode === 2 || (mode === 0 && systemDark)

    /// The ground of a window.
    readonly property color window: dark ? "#14171b" : "#f4f5f7"
    /// The ground of what lies beside the content: sidebars, dialogs.
    readonly property color panel: dark ? "#1b2027" : "#ffffff"
    /// The ground of a card.
    readonly property color card: dark ? "#1b2027" : "#ffffff"
    /// The ground of what is typed into.
    readonly property color field: dark ? "#1b2027" : "#ffffff"
    /// The line around cards, and between things.
    readonly property color border: dark ? "#323a44" : "#dde1e6"
    /// The line around what can be operated: fields, boxes.
    readonly property color fieldBorder: dark ? "#7b8794" : "#838d99"
    /// The ground of what the pointer is over.
    readonly property color hover: dark ? "#262d36" : "#eaedf1"
    /// The ground of what is pressed.
    readonly property color pressed: dark ? "#303945" : "#dfe3e9"
    /// The ground of a chosen row.
    readonly property color selected: dark ? "#1d3557" : "#e0ecfd"
    /// What covers the window behind a dialog.
    readonly property color shade: dark ? "#99000000" : "#660d1117"

    /// The colour of text.
    readonly property color text: dark ? "#e8edf2" : "#1b222b"
    /// The colour of text that matters less.
    readonly property color textDim: dark ? "#a3aebb" : "#56616e"
    /// The ground of the main button, and the frame of the focus.
    readonly property color accent: dark ? "#5aa6ff" : "#1a66dd"
    /// The same, with the pointer over it.
    readonly property color accentHover: dark ? "#79b7ff" : "#1558c4"
    /// The colour of text on `accent`.
    readonly property color accentText: dark ? "#0a1524" : "#ffffff"
    /// The colour of a text that can be pressed.
    readonly property color link: dark ? "#79b7ff" : "#1558c4"

    /// The colour of text that says that all is well.
    readonly property color good: dark ? "#56cc93" : "#0f6b3f"
    /// The ground of such text.
    readonly property color goodSoft: dark ? "#14301f" : "#dcf3e5"
    /// The colour of text that warns.
    readonly property color warn: dark ? "#f0a63a" : "#8a4b00"
    /// The ground of such text.
    readonly property color warnSoft: dark ? "#3b2800" : "#ffecc0"
    /// The colour of text that tells of a failure.
    readonly property color bad: dark ? "#ff8a87" : "#b3221e"
    /// The ground of such text.
    readonly property color badSoft: dark ? "#431a1c" : "#fde3e2"
    /// The colour of text on `neutralSoft`.
    readonly property color neutral: dark ? "#b3bdc8" : "#525c68"
    /// The ground of a note that says neither.
    readonly property color neutralSoft: dark ? "#2a313a" : "#e9ecf0"

    /// The system's font size, in pixels.
    readonly property real baseSize: Qt.application.font.pixelSize > 0
        ? Qt.application.font.pixelSize : Math.round(Qt.application.font.pointSize * 96 / 72)
    /// The size of text, in pixels.
    readonly property real fontSize: Math.max(13, Math.min(22, baseSize)) * textScale
    /// The size of text that matters less.
    readonly property real smallSize: fontSize * 0.88
    /// The size of a page's title.
    readonly property real titleSize: fontSize * 1.4
    /// The size of a heading.
    readonly property real headingSize: fontSize * 1.15
    /// The font for bytes and PEM texts.
    readonly property string fixedFamily: Desktop.fixedFamily

    /// The step that distances are multiples of; it grows with the text.
    readonly property real unit: Math.round(fontSize * 0.58)
    /// The radius of corners.
    readonly property real radius: 8
    /// The height of buttons and fields.
    readonly property real controlHeight: Math.round(fontSize * 2.55)
    /// The height of a row of a list.
    readonly property real rowHeight: Math.round(fontSize * 4.3)
    /// The width and height of an icon.
    readonly property real iconSize: Math.round(fontSize * 1.3)
    /// The width of the frame around what has the focus.
    readonly property int focusWidth: 2

    /// Pairs of text colour and background, for the contrast check.
    readonly property var pairs: [
        ["text on window", text, window], ["text on card", text, card],
        ["text on field", text, field],
        ["text on hover", text, hover], ["text on pressed", text, pressed],
        ["text on selected", text, selected],
        ["dim on window", textDim, window], ["dim on card", textDim, card],
        ["dim on hover", textDim, hover], ["dim on selected", textDim, selected],
        ["accent button", accentText, accent], ["accent button hover", accentText, accentHover],
        ["link on card", link, card], ["link on window", link, window],
        ["link on selected", link, selected], ["link on hover", link, hover],
        ["good badge", good, goodSoft], ["warn badge", warn, warnSoft],
        ["bad badge", bad, badSoft], ["neutral badge", neutral, neutralSoft],
        ["warn on card", warn, card], ["bad on card", bad, card], ["good on card", good, card],
        ["bad on window", bad, window], ["text on warn", text, warnSoft],
        ["text on bad", text, badSoft], ["text on good", text, goodSoft]
    ]

    /// The URL of the icon of that name.
    function icon(name) {
        return Qt.resolvedUrl("icons/" + name + ".svg")
    }

    // In the order of `Validity`, Unknown first. By number, because Trivex.Crypto.Tools brings in
    // what works with certificates, and whoever wants a colour doesn't have to wait for it.
    // internal
    readonly property var stateColors: [neutral, good, warn, bad, warn]
    // internal
    readonly property var stateGrounds: [neutralSoft, goodSoft, warnSoft, badSoft, warnSoft]

    /// Colour of a validity state's text, and of its ground.
    function stateColor(state) {
        return stateColors[state] || neutral
    }
    /// The ground of a text in that validity's colour.
    function stateGround(state) {
        return stateGrounds[state] || neutralSoft
    }
}
