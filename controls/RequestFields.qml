// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// The values of a `RequestValues`, a field each, and a button that adds one of any type. What is
/// wrong with a value is said beside its field while it is typed; `check` goes to the first that a
/// request would be refused for.
FillColumn {
    id: list
    /// The values; not owned.
    property RequestValues values
    /// The text of the button that adds one.
    property string addText
    /// Begins the object names of what is not one value's.
    property string prefix
    /// Any attribute may be added by its number.
    property bool numbered: false
    /// Labels are above the fields: beside them there is no room.
    readonly property bool narrow: width < Theme.fontSize * 30
    /// The fields, by row.
    readonly property alias fields: repeater
    /// Enter was pressed in a field.
    signal accepted()
    spacing: Theme.unit * 1.25

    /// Moves the focus to the first field.
    function focusFirst() {
        if (repeater.count > 0)
            repeater.itemAt(0).field.forceActiveFocus(Qt.TabFocusReason)
    }
    /// False, with the focus at the first such field, when a value would be refused.
    function check() {
        const row = values.firstRefused()
        if (row >= 0)
            repeater.itemAt(row).field.forceActiveFocus(Qt.TabFocusReason)
        return row < 0
    }
    /// Adds an empty value of that type and moves the focus to its field.
    function add(type) {
        const row = values.add(type)
        if (row >= 0)
            repeater.itemAt(row).field.forceActiveFocus(Qt.TabFocusReason)
        return row >= 0
    }

    GridLayout {
        columns: list.narrow ? 1 : 2
        columnSpacing: Theme.unit * 1.5
        rowSpacing: Theme.unit * 1.25
        visible: repeater.count > 0
        Layout.fillWidth: true
        Repeater {
            id: repeater
            model: list.values
            LabeledField {
                id: delegate
                objectName: model.type + "Field"
                label: model.title
                flag: model.problem
                text: model.value
                field.objectName: model.type + "Input"
                field.onAccepted: list.accepted()
                // A profile has taken its place, or the page has gone, when the model is none.
                onTextChanged: if (list.values && text !== model.value) list.take(index, model.type, text)
                Layout.fillWidth: true
                Layout.alignment: Qt.AlignTop
            }
        }
    }
    // internal
    function take(row, type, text) {
        // Codes of countries are written in capitals, so the field shows capitals during typing.
        const capitals = text.toUpperCase()
        const wanted = type === "country" && capitals.length === text.length ? capitals : text
        values.setValue(row, wanted)
        if (wanted !== text)
            repeater.itemAt(row).text = wanted
    }
    Flow {
        Layout.fillWidth: true
        Button {
            id: addButton
            objectName: list.prefix + "Add"
            text: list.addText
            icon.source: Theme.icon("plus")
            flat: true
            width: Math.min(implicitWidth, parent.width)
            onClicked: menu.popup(addButton, 0, addButton.height)
            Menu {
                id: menu
                objectName: list.prefix + "Menu"
                title: addButton.text
                Instantiator {
                    model: list.values ? list.values.types : []
                    MenuItem {
                        objectName: list.prefix + "-" + modelData
                        text: list.values.title(modelData)
                        onTriggered: list.add(modelData)
                    }
                    onObjectAdded: menu.insertItem(index, object)
                    onObjectRemoved: menu.removeItem(object)
                }
                MenuItem {
                    objectName: list.prefix + "-number"
                    text: qsTrId("trivex-app-field-other")
                    visible: list.numbered
                    height: visible ? implicitHeight : 0
                    onTriggered: {
                        numberRow.visible = true
                        number.forceActiveFocus(Qt.TabFocusReason)
                    }
                }
            }
        }
    }
    GridLayout {
        id: numberRow
        visible: false
        columns: width < numberButton.implicitWidth + Theme.fontSize * 10 ? 1 : 2
        columnSpacing: Theme.unit
        rowSpacing: Theme.unit
        Layout.fillWidth: true
        TextField {
            id: number
            objectName: list.prefix + "Number"
            placeholderText: "1.2.3.4"
            Accessible.name: qsTrId("trivex-app-field-number")
            Layout.fillWidth: true
            onAccepted: numberButton.clicked()
        }
        Button {
            id: numberButton
            objectName: list.prefix + "NumberAdd"
            text: qsTrId("trivex-app-field-add-number")
            onClicked: {
                if (list.add(number.text.trim())) {
                    numberRow.visible = false
                    number.clear()
                } else {
                    wrongNumber.visible = true
                }
            }
        }
    }
    Notice {
        id: wrongNumber
        level: 2
        text: visible ? qsTrId("trivex-app-field-number-wrong") : ""
        visible: false
        Layout.fillWidth: true
        Connections {
            target: number
            function onTextChanged() { wrongNumber.visible = false }
        }
    }
}
