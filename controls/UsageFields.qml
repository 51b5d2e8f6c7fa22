// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Which of the usages in `names` are wanted, a box each. The wanted ones are `chosen`; what it
/// holds beside them, a number say, stays.
FillColumn {
    id: list
    /// What stands above the boxes.
    property string label
    /// The usages that are offered.
    property var names: []
    /// Those that are wanted.
    property var chosen: []
    /// What people call one of them.
    property var title: function(name) { return name }
    /// A box was ticked or cleared; these are wanted now.
    signal edited(var chosen)
    spacing: 0

    Label {
        textFormat: Text.PlainText
        text: list.label
        color: Theme.textDim
        font.pixelSize: Theme.smallSize
        wrapMode: Text.WordWrap
        Layout.fillWidth: true
    }
    GridLayout {
        columns: list.width < Theme.fontSize * 30 ? 1 : 2
        columnSpacing: Theme.unit * 1.5
        rowSpacing: 0
        Layout.fillWidth: true
        Repeater {
            model: list.names
            CheckBox {
                objectName: "usage-" + modelData
                text: list.title(modelData)
                checked: list.chosen.indexOf(modelData) >= 0
                Layout.fillWidth: true
                Layout.preferredWidth: 100
                onToggled: {
                    const rest = list.chosen.filter(function(one) { return one !== modelData })
                    list.edited(checked ? rest.concat([modelData]) : rest)
                    checked = Qt.binding(function() { return list.chosen.indexOf(modelData) >= 0 })
                }
            }
        }
    }
}
