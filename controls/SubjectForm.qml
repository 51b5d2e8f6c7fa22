// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// The subject of a request: the fields that a request carries, and identifiers whose check digits
/// are verified during typing. A value that no authority accepts gets a message beside its field,
/// and `check` refuses it. Loaded values that the user did not touch stay exactly as they are.
FillColumn {
    id: form
    /// Shows the fields of the Russian identifiers.
    property bool identifiers: true
    /// There is a name, without which nobody is asked for a certificate.
    readonly property bool complete: commonName.text.trim().length > 0
    /// Labels are above the fields: beside them there is no room.
    readonly property bool narrow: width < Theme.fontSize * 30
    // internal
    property var original: []
    spacing: Theme.unit * 1.25

    /// Moves the focus to the first field.
    function focusFirst() {
        commonName.field.forceActiveFocus(Qt.TabFocusReason)
    }
    // internal
    readonly property var fields: [
        [commonName, "setCommonName", Certificate.CommonName],
        [organization, "setOrganization", Certificate.Organization],
        [department, "setDepartment", Certificate.OrganizationalUnit],
        [locality, "setLocality", Certificate.Locality],
        [state, "setCountry", Certificate.State],
        [country, "setCountryCode", Certificate.Country],
        [email, "setEmail", Certificate.Email]]
    /// The attributes that it shows.
    readonly property var types: fields.map(function(field) { return field[2] })
        .concat(identifiers ? identifierTypes : [])
    // internal
    readonly property var identifierTypes: [Certificate.INN, Certificate.INNLE, Certificate.SNILS,
                                            Certificate.OGRN, Certificate.OGRNIP]
    // Each with the types that it stands for; a number's length tells which of two it is.
    // internal
    readonly property var identifierFields: [
        [tin, "setTin", [Certificate.INN, Certificate.INNLE], 10],
        [snils, "setSnils", [Certificate.SNILS, Certificate.SNILS], 0],
        [psrn, "setPsrn", [Certificate.OGRN, Certificate.OGRNIP], 15]]
    // internal
    property var originalNumbers: []

    /// Fills the fields with the subject of a saved request.
    function load(request) {
        const names = ["commonName", "subjectOrganization", "subjectOrganizationalUnit",
                       "subjectLocality", "subjectCountry", "subjectCountryCode", "subjectEmail"]
        for (let i = 0; i < names.length; ++i)
            fields[i][0].text = request ? request[names[i]] : ""
        original = fields.map(function(field) { return field[0].text })
        for (const field of identifierFields)
            field[0].text = RequestSubject.value(request, shownType(request, field))
        originalNumbers = numbers()
    }
    /// The type of the number that a field shows.
    function shownType(request, field) {
        return RequestSubject.value(request, field[2][0]) ? field[2][0] : field[2][1]
    }
    // internal
    function numbers() {
        return identifierFields.map(function(field) { return field[0].text })
    }
    /// Empties all fields.
    function clear() {
        for (const field of fields)
            field[0].text = ""
        for (const field of identifierFields)
            field[0].text = ""
        original = []
        originalNumbers = []
    }
    // internal
    function isTouched(i) {
        return fields[i][0].text !== original[i]
    }
    /// Whether a field holds something else than what it was filled with.
    function isChanged() {
        return fields.some(function(field, i) { return field[0].text !== (original[i] || "") })
            || numbers().some(function(text, i) { return text !== (originalNumbers[i] || "") })
    }
    /// False, with the focus at the first such field, when a value can't go into a request.
    function check() {
        for (let i = 0; i < fields.length; ++i) {
            if (isTouched(i) && fields[i][0].flag) {
                fields[i][0].field.forceActiveFocus(Qt.TabFocusReason)
                return false
            }
        }
        return complete
    }
    /// Gives the value of every touched field to `request`, in place of the earlier value; true
    /// when there was one.
    function apply(request) {
        let any = false
        for (let i = 0; i < fields.length; ++i) {
            if (!isTouched(i))
                continue
            const text = fields[i][0].text.trim()
            if (!RequestSubject.replace(request, fields[i][2], text))
                request[fields[i][1]](text)
            any = true
        }
        return identifiers && applyNumbers(request) || any
    }
    // internal
    function applyNumbers(request) {
        let any = false
        for (let i = 0; i < identifierFields.length; ++i) {
            const field = identifierFields[i]
            if (field[0].text === (originalNumbers[i] || ""))
                continue
            any = true
            // They are written with blanks and hyphens and kept without.
            const digits = field[0].text.replace(/[\s-]/g, "")
            const shown = shownType(request, field)
            const type = digits.length === field[3] ? field[2][1] : field[2][0]
            if (digits && type !== shown)
                RequestSubject.replace(request, shown, "")
            if (!RequestSubject.replace(request, digits ? type : shown, digits) && digits)
                request[field[1]](digits)
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
            field.objectName: "departmentInput"
            label: qsTrId("trivex-app-field-department")
            Layout.fillWidth: true
        }
        LabeledField {
            id: locality
            field.objectName: "localityInput"
            label: qsTrId("trivex-app-field-locality")
            Layout.fillWidth: true
        }
        LabeledField {
            id: state
            field.objectName: "stateInput"
            label: qsTrId("trivex-app-field-state")
            Layout.fillWidth: true
        }
        LabeledField {
            id: country
            objectName: "countryField"
            field.objectName: "countryInput"
            label: qsTrId("trivex-app-field-country")
            flag: text && !/^[A-Z]{2}$/.test(text.trim()) ? qsTrId("trivex-app-field-country-flag")
                                                          : ""
            Layout.fillWidth: true
            // Codes are written in capitals, so the field shows capitals during typing.
            Connections {
                target: country.field
                function onTextEdited() {
                    const capitals = country.text.toUpperCase()
                    if (capitals !== country.text && capitals.length === country.text.length)
                        country.text = capitals
                }
            }
        }
        LabeledField {
            id: email
            objectName: "emailField"
            field.objectName: "emailInput"
            label: qsTrId("trivex-app-field-email")
            // The attribute can hold one address, in Latin letters.
            flag: text && !/^[\w.!#$%&'*+\/=?^`{|}~-]+@[A-Za-z0-9]([A-Za-z0-9-]*[A-Za-z0-9])?(\.[A-Za-z0-9]([A-Za-z0-9-]*[A-Za-z0-9])?)*$/.test(text.trim())
                || /^\.|\.\.|\.@/.test(text.trim()) ? qsTrId("trivex-app-field-email-flag") : ""
            Layout.fillWidth: true
        }
    }
    Label {
        textFormat: Text.PlainText
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
