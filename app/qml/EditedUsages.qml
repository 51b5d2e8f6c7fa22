// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// The usages of a saved request, behind a button until there are some.
FillColumn {
    id: edited
    property bool unfolded: false
    /// Somebody has changed them.
    property bool touched: false
    spacing: Theme.unit

    function load(request) {
        usages.keyUsages = RequestSubject.keyUsages(request)
        usages.purposes = RequestSubject.purposes(request)
        unfolded = usages.keyUsages.length + usages.purposes.length > 0
        touched = false
    }
    /// Gives them to `request` where somebody changed them; true then.
    function apply(request) {
        return touched && RequestSubject.setUsages(request, usages.keyUsages, usages.purposes)
    }

    KeyRequest {
        id: names
    }
    Flow {
        Layout.fillWidth: true
        Button {
            objectName: "unfoldUsages"
            text: edited.unfolded ? qsTrId("trivex-app-show-less")
                                  : qsTrId("trivex-app-edit-usages")
            icon.source: Theme.icon(edited.unfolded ? "up" : "down")
            flat: true
            // A positioner asks for no limit of a layout.
            width: Math.min(implicitWidth, parent.width)
            onClicked: edited.unfolded = !edited.unfolded
        }
    }
    RequestUsages {
        id: usages
        request: names
        visible: edited.unfolded
        onKeyUsagesEdited: {
            keyUsages = chosen
            edited.touched = true
        }
        onPurposesEdited: {
            purposes = chosen
            edited.touched = true
        }
        Layout.fillWidth: true
    }
}
