// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Qt.labs.folderlistmodel 2.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Lets the user choose a file in an application that has no widgets, and so no file dialog of the
/// platform's. `nameFilters` holds pairs of a name and its patterns.
BaseDialog {
    id: chooser
    /// The kinds of file that are offered: pairs of a name and its patterns.
    property var nameFilters: []
    /// The folder that is shown.
    property url folder: Files.url(Files.homeFolder)
    /// That file was chosen.
    signal chosen(url file)

    objectName: "fileChooser"

    // internal
    function take(index) {
        const isFolder = files.get(index, "fileIsDir")
        const file = files.get(index, "fileUrl")
        list.currentIndex = -1
        if (isFolder) {
            folder = file
        } else {
            close()
            chosen(file)
        }
    }
    // internal
    readonly property bool typed: path.text !== Files.path(folder)
    // internal
    function forgetTyped() {
        path.text = Files.path(folder)
        wrong.text = ""
    }
    /// Accepts the typed text: a folder to open, or a file.
    function go() {
        const file = Files.url(path.text)
        wrong.text = Files.exists(path.text) ? "" : qsTrId("trivex-app-path-missing")
        if (wrong.text)
            return
        if (Files.isFolder(path.text)) {
            folder = file
        } else {
            close()
            chosen(file)
        }
    }
    onAboutToShow: forgetTyped()
    onFolderChanged: forgetTyped()
    onOpened: list.forceActiveFocus(Qt.PopupFocusReason)

    FolderListModel {
        id: files
        folder: chooser.folder
        showDirsFirst: true
        showDotAndDotDot: true
        showOnlyReadable: true
        nameFilters: chooser.nameFilters.length ? chooser.nameFilters[kind.currentIndex][1] : ["*"]
    }
    TextField {
        id: path
        objectName: "filePath"
        text: Files.path(chooser.folder)
        selectByMouse: true
        Accessible.name: chooser.title
        Layout.fillWidth: true
        onTextEdited: wrong.text = ""
        // Nothing else is meant by it, least of all what is chosen in the list.
        Keys.onReturnPressed: chooser.go()
        Keys.onEnterPressed: chooser.go()
    }
    Notice {
        id: wrong
        objectName: "filePathWrong"
        level: 2
        Layout.fillWidth: true
    }
    ListView {
        id: list
        objectName: "fileList"
        height: Theme.rowHeight * 4
        clip: true
        currentIndex: -1
        activeFocusOnTab: true
        boundsBehavior: Flickable.StopAtBounds
        model: files
        Layout.fillWidth: true
        Accessible.role: Accessible.List
        Accessible.name: path.text
        ScrollBar.vertical: ScrollBar {}
        delegate: PlainDelegate {
            width: list.width
            text: fileIsDir ? fileName + "/" : fileName
            highlighted: ListView.isCurrentItem
            focusPolicy: Qt.NoFocus
            onClicked: {
                list.currentIndex = index
                chooser.forgetTyped()
            }
            onDoubleClicked: chooser.take(index)
        }
        Keys.onReturnPressed: if (currentIndex >= 0) chooser.take(currentIndex)
        Keys.onEnterPressed: if (currentIndex >= 0) chooser.take(currentIndex)
        onActiveFocusChanged: if (activeFocus && currentIndex < 0 && count > 0) currentIndex = 0
    }
    ComboBox {
        id: kind
        model: chooser.nameFilters.map(function(filter) { return filter[0] })
        Accessible.name: currentText
        Layout.fillWidth: true
    }
    footer: DialogButtons {
        Button {
            objectName: "fileCancel"
            text: qsTrId("trivex-app-cancel")
            onClicked: chooser.close()
        }
        Button {
            objectName: "fileAccept"
            text: qsTrId("trivex-app-ok")
            highlighted: true
            enabled: chooser.typed ? path.text.length > 0 : list.currentIndex >= 0
            // What was done last is meant.
            onClicked: chooser.typed ? chooser.go() : chooser.take(list.currentIndex)
        }
    }
}
