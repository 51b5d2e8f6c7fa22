// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Every component of Trivex.Crypto.Controls that works without a token, with data of its own.
ApplicationWindow {
    id: window
    objectName: "gallery"
    width: 1100
    height: 800
    visible: true
    title: "Trivex.Crypto.Controls"

    function days(n) {
        return new Date(Date.now() + n * 86400000)
    }
    readonly property var people: [
        ["Иванова Мария Петровна", "Удостоверяющий центр «Пример»", 400, "Token A"],
        ["maria.ivanova@example.org", "Example Issuing CA G2", 11, "USER"],
        ["build.example.org", "Example Issuing CA G2", -30, "USER"],
        ["Example Root CA", "Example Root CA", 5000, "System"],
        ["Example Issuing CA G2", "Example Root CA", 1800, "System"]]

    ListModel {
        id: rows
        Component.onCompleted: {
            for (const one of window.people) {
                const until = window.days(one[2])
                append({ name: one[0], issuer: one[1], section: one[3], until: until,
                         initial: one[0][0].toUpperCase(), hasKey: one[3] === "Token A",
                         validity: Validity.state(window.days(-900), until) })
            }
        }
    }

    RowLayout {
        anchors.fill: parent
        anchors.margins: Theme.unit * 2
        spacing: Theme.unit * 2
        ColumnLayout {
            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.preferredWidth: 500
            SearchField {
                id: search
                Layout.fillWidth: true
            }
            Notice {
                level: 2
                text: qsTrId("trivex-app-expiring", 1)
                Layout.fillWidth: true
            }
            CertificateList {
                model: rows
                pattern: search.text
                Layout.fillWidth: true
                Layout.fillHeight: true
            }
            Flow {
                spacing: Theme.unit
                Layout.fillWidth: true
                Button {
                    text: qsTrId("trivex-app-pin-title")
                    onClicked: pinDialog.open()
                }
                Button {
                    text: qsTrId("trivex-app-remove")
                    onClicked: removeDialog.open()
                }
                Button {
                    text: qsTrId("trivex-app-error-title")
                    onClicked: errorDialog.show(qsTrId("trivex-app-cause-removed"),
                                                qsTrId("trivex-app-advice-removed"), "report")
                }
                Button {
                    text: qsTrId("trivex-app-saved")
                    onClicked: toast.show(text)
                }
                Switch {
                    text: qsTrId("trivex-app-colours-dark")
                    checked: Theme.dark
                    onToggled: Theme.mode = checked ? 2 : 1
                }
            }
        }
        DetailsView {
            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.preferredWidth: 500
            header.name: window.people[0][0]
            header.from: window.days(-900)
            header.until: window.days(400)
            header.validity: Validity.Valid
            header.place: window.people[0][3]
            header.canRemove: true
            header.canSign: true
            groups: [{ rows: [
                { label: "Издатель", value: window.people[0][1] },
                { label: "Серийный номер", value: "01:9A:4F:77:20:C3", fixed: true },
                { label: "ИНН", value: "7830002294", flag: CheckDigits.explain(CheckDigits.Inn, "7830002294") }]
            }]
        }
    }
    PinDialog {
        id: pinDialog
        tokenName: "Token A"
        purposeText: qsTrId("trivex-app-purpose-write")
        pinText: qsTrId("trivex-app-pin-final")
        lastTry: true
    }
    RemoveDialog {
        id: removeDialog
        name: window.people[0][0]
        place: window.people[0][3]
        hasKey: true
    }
    ErrorDialog {
        id: errorDialog
    }
    Toast {
        id: toast
    }
}
