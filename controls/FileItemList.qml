// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Everything in a file, with ticks. Arrow keys choose a row, Space turns its tick, Enter shows all
/// that is in it. As high as its rows, up to a few.
FillColumn {
    id: view
    /// What the file holds; not owned.
    property FileItemModel items
    /// It is as high as so many rows, and scrolls where there are more.
    readonly property int mostRows: 5
    /// How many rows can be ticked.
    readonly property int checkable: items ? items.checkableCount : 0
    /// How many rows are ticked.
    readonly property int checked: items ? items.checkedCount : 0
    /// That row is to be shown in full.
    signal viewAsked(int row)
    spacing: Theme.unit * 0.5

    /// The first row with its tick, or -1.
    function firstChecked() {
        for (let row = 0; row < items.count; ++row) {
            if (items.value(row, FileItemModel.CheckedRole))
                return row
        }
        return -1
    }
    CheckBox {
        objectName: "itemsAll"
        visible: view.checkable > 1
        padding: 0
        leftPadding: Theme.unit * 0.5 // over the ticks of the rows
        text: qsTrId("trivex-app-items-chosen").arg(view.checked).arg(view.checkable)
        checkState: view.checked === 0 ? Qt.Unchecked
            : view.checked === view.checkable ? Qt.Checked : Qt.PartiallyChecked
        nextCheckState: function() {
            return checkState === Qt.Checked ? Qt.Unchecked : Qt.Checked
        }
        onClicked: view.items.setAllChecked(checkState === Qt.Checked)
        Layout.fillWidth: true
    }
    ListView {
        id: list
        objectName: "itemList"
        visible: count > 0
        implicitHeight: Math.min(count, view.mostRows) * Theme.rowHeight
        clip: true
        activeFocusOnTab: true
        currentIndex: 0
        boundsBehavior: Flickable.StopAtBounds
        model: view.items
        Layout.fillWidth: true
        Accessible.role: Accessible.List
        Accessible.name: qsTrId("trivex-app-items-of-file")
        ScrollBar.vertical: ScrollBar { id: bar }
        delegate: FileItemRow {
            width: list.width - (bar.visible ? bar.width : 0)
            height: Theme.rowHeight
            name: model.name
            detail: model.detail
            letter: model.initial
            from: model.from
            until: model.until
            checkable: model.checkable
            indented: view.checkable > 0
            checked: model.checked
            withKey: model.hasKey
            current: ListView.isCurrentItem && list.activeFocus
            onToggled: view.items.setChecked(index, checked)
            onViewAsked: view.viewAsked(index)
        }
        Keys.onSpacePressed: view.items.setChecked(currentIndex,
            !view.items.value(currentIndex, FileItemModel.CheckedRole))
        Keys.onReturnPressed: view.viewAsked(currentIndex)
        Keys.onEnterPressed: view.viewAsked(currentIndex)
    }
}
