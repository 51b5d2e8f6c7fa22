// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// The subject of a request: the fields that a request carries, and identifiers whose check digits
/// are verified as one types. `values` are set before editing; `changed` fields are told apart so
/// that only they are handed to a request that has them already.
FillColumn {
    id: form
    property bool identifiers: true
    readonly property bool complete: commonName.text.trim().length > 0
    readonly property bool narrow: width < Theme.fontSize * 30
    property var original: ({})
    spacing: Theme.unit * 1.25

    readonly property var fields: [
        [commonName, "setCommonName"], [organization, "setOrganization"],
        [department, "setDepartment"], [locality, "setLocality"], [state, "setCountry"],
        [country, "setCountryCode"], [email, "setEmail"]]
    readonly property var identifierFields: [
        [tin, "setTin"], [snils, "setSnils"], [psrn, "setPsrn"]]

    function load(request) {
        const names = ["commonName", "subjectOrganization", "subjectOrganizationalUnit",
                       "subjectLocality", "subjectCountry", "subjectCountryCode", "subjectEmail"]
        for (let i = 0; i < names.length; ++i)
            fields[i][0].text = request ? request[names[i]] : ""
        original = fields.map(function(field) { return field[0].text })
    }
    function clear() {
        for (const field of fields.concat(identifierFields))
            field[0].text = ""
        original = []
    }
    /// Hands every field that was changed to `request`; true when there was one.
    function apply(request) {
        let any = false
        const all = identifiers ? fields.concat(identifierFields) : fields
        for (let i = 0; i < all.length; ++i) {
            const text = all[i][0].text.trim()
            if (text === (original[i] || ""))
                continue
            request[all[i][1]](text)
            any = true
        }
        return any
    }

    LabeledField {
        id: commonName
        objectName: "commonNameField"
        field.objectName: "commonNameInput"
        label: qsTrId("trivex-app-field-name")
        Layout.fillWidth: true
    }
    GridLayout {
        columns: form.narrow ? 1 : 2
        columnSpacing: Theme.unit * 1.5
        rowSpacing: Theme.unit * 1.25
        Layout.fillWidth: true
        LabeledField {
            id: organization
            objectName: "organizationField"
            field.objectName: "organizationInput"
            label: qsTrId("trivex-app-field-organization")
            Layout.fillWidth: true
        }
        LabeledField {
            id: department
            label: qsTrId("trivex-app-field-department")
            Layout.fillWidth: true
        }
        LabeledField {
            id: locality
            label: qsTrId("trivex-app-field-locality")
            Layout.fillWidth: true
        }
        LabeledField {
            id: state
            label: qsTrId("trivex-app-field-state")
            Layout.fillWidth: true
        }
        LabeledField {
            id: country
            label: qsTrId("trivex-app-field-country")
            flag: text && !/^[A-Za-z]{2}$/.test(text) ? qsTrId("trivex-app-field-country-flag") : ""
            Layout.fillWidth: true
        }
        LabeledField {
            id: email
            label: qsTrId("trivex-app-field-email")
            flag: text && !/^\S+@\S+$/.test(text) ? qsTrId("trivex-app-field-email-flag") : ""
            Layout.fillWidth: true
        }
    }
    Label {
        text: qsTrId("trivex-app-identifiers-note")
        visible: form.identifiers
        color: Theme.textDim
        font.pixelSize: Theme.smallSize
        wrapMode: Text.WordWrap
        Layout.fillWidth: true
    }
    GridLayout {
        columns: form.narrow ? 1 : 3
        columnSpacing: Theme.unit * 1.5
        rowSpacing: Theme.unit * 1.25
        visible: form.identifiers
        Layout.fillWidth: true
        LabeledField {
            id: tin
            objectName: "innField"
            field.objectName: "innInput"
            label: qsTrId("trivex-app-field-inn")
            flag: CheckDigits.explain(CheckDigits.Inn, text)
            Layout.fillWidth: true
        }
        LabeledField {
            id: snils
            objectName: "snilsField"
            field.objectName: "snilsInput"
            label: qsTrId("trivex-app-field-snils")
            flag: CheckDigits.explain(CheckDigits.Snils, text)
            Layout.fillWidth: true
        }
        LabeledField {
            id: psrn
            objectName: "ogrnField"
            field.objectName: "ogrnInput"
            label: qsTrId("trivex-app-field-ogrn")
            flag: CheckDigits.explain(text.replace(/\D/g, "").length === 15
                                      ? CheckDigits.Ogrnip : CheckDigits.Ogrn, text)
            Layout.fillWidth: true
        }
    }
}
