// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Chooses among the ready filters; each goes on and off by itself.
ToolButton {
    id: button
    property ReadyFilters filters
    /// A page of one token needs no choice of tokens.
    property bool offersTokens: true
    objectName: "filterButton"
    text: qsTrId("trivex-app-filter")
    icon.source: Theme.icon("filter")
    display: AbstractButton.IconOnly
    highlighted: filters.active
    Accessible.name: filters.active ? text + ": " + filters.words : text
    onClicked: menu.popup(button, 0, button.height)

    Menu {
        id: menu
        objectName: "filterMenu"
        title: button.text
        FilterItem {
            objectName: "filterExpiring"
            text: Validity.word(Validity.Expiring)
            on: button.filters.rows.wantedValidity === Validity.Expiring
            onTriggered: button.filters.toggleValidity(Validity.Expiring)
        }
        FilterItem {
            objectName: "filterExpired"
            text: Validity.word(Validity.Expired)
            on: button.filters.rows.wantedValidity === Validity.Expired
            onTriggered: button.filters.toggleValidity(Validity.Expired)
        }
        FilterItem {
            objectName: "filterKeys"
            text: qsTrId("trivex-app-filter-keys")
            on: button.filters.rows.onlyWithKeys
            onTriggered: button.filters.toggleKeys()
        }
        Instantiator {
            model: button.offersTokens ? button.filters.tokens : null
            onObjectAdded: menu.addItem(object)
            onObjectRemoved: menu.removeItem(object)
            delegate: FilterItem {
                objectName: "filterToken-" + model.name
                text: Texts.put(qsTrId("trivex-app-filter-token"), [model.name])
                on: button.filters.rows.wantedStore === model.storeId
                onTriggered: button.filters.toggleToken(model.storeId, model.name)
            }
        }
    }
}
