// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto 1.0

// Reading: every store with its rows, one certificate in full, a token that comes and goes.
Item {
    id: act

    property Stores stores

    readonly property string maria: "Иванова Мария Петровна"
    readonly property string pyotr: "Пётр Сидоров 7707083893"
    readonly property string authority: "Trivex Tour Authority"
    readonly property var properties: [
        "commonName", "serialNumber", "notValidBefore", "notValidAfter", "issuer", "signatureType",
        "subjectOrganization", "subjectOrganizationalUnit", "subjectLocality", "subjectCountryCode",
        "signatureAlgorithm", "subjectName", "subjectCountry", "subjecAddress", "subjectEmail",
        "subjectInn", "subjectSnils", "subjectOgrn", "subjectInnle", "subjectOgrnip",
        "subjectIdentificationKind", "publicKeyId", "publicKeyTypeAlgorithm", "publicKeyMarker",
        "privateKeyAvailability", "privateKeyLocation", "privateKeyManufacturer", "fileName",
        "isRoot", "isNull"
    ]
    readonly property var expected: ({
        commonName: maria, subjectName: maria, issuer: authority,
        signatureType: "Not qualified", subjectOrganization: "ООО «Ромашка»",
        subjectOrganizationalUnit: "Бухгалтерия", subjectLocality: "Москва",
        subjectCountryCode: "RU", subjectCountry: "г. Москва", subjecAddress: "ул. Ленина, д. 1",
        subjectEmail: "ivanova@romashka.example", subjectInn: "500100732259",
        subjectSnils: "11223344595", subjectOgrn: "1027700132195", subjectInnle: "7707083893",
        subjectOgrnip: "304500116000157", subjectIdentificationKind: "0",
        publicKeyTypeAlgorithm: "RSA", publicKeyMarker: "ООО «Ромашка»",
        privateKeyManufacturer: "ООО «Ромашка»", fileName: maria + ".crt",
        isRoot: false, isNull: false
    })

    function* play() {
        toolbox.heading("Reading: System, USER and the token")
        yield* listStores()
        yield* showCertificate()
        yield* comeAndGo()
    }

    function* listStores() {
        const began = Date.now()
        const ready = yield {
            until: () => stores.count(3) >= 3 && stores.count(1) >= 1 && stores.count(0) > 0
                         && !KeyStoreModel.isBusy,
            within: 20000
        }
        toolbox.step(ready, "stores are listed", "%1 rows after %2 ms"
                     .arg(KeyStoreModel.rowCount()).arg(Date.now() - began))
        toolbox.step(stores.locations().indexOf(toolbox.token) >= 0,
                     "the token is a place to write to", stores.locations().join(", "))
        const system = stores.rows(0)
        const bundled = Number(toolbox.run("grep", ["-c", "BEGIN CERTIFICATE",
                                                    "/etc/ssl/certs/ca-certificates.crt"]).output)
        toolbox.step(system.length > 0 && system.every(row => row.name !== ""), "System",
                     "%1 rows (the system's file holds %2 certificates), first %3"
                     .arg(system.length).arg(bundled).arg(system.length ? system[0].name : "none"))
        for (const type of [2, 4]) {
            const rows = stores.rows(type)
            toolbox.step(true, stores.typeNames[type], rows.length === 0 ? "no rows"
                         : rows.map(row => row.name).join("; "))
        }
        showRows("USER", 1, ["Anna Example"])
        showRows(toolbox.token, 3, [maria, pyotr, authority])
    }

    function showRows(store, type, names) {
        const rows = stores.rows(type)
        const seen = rows.map(row => row.name + " (" + row.issuer + ")")
        const same = rows.map(row => row.name).sort().join("|") === names.slice().sort().join("|")
        toolbox.step(same, store, seen.join("; "))
    }

    function* showCertificate() {
        const row = stores.find(3, maria)
        if (!row) {
            toolbox.step(false, "thirty properties", "the certificate is not there")
            return
        }
        const values = properties.map(name => name + "=" + row.certificate[name])
        toolbox.step(properties.every(name => row.certificate[name] !== undefined)
                     && properties.length === 30, "thirty properties", values.join(", "))
        const wrong = Object.keys(expected).filter(
            name => row.certificate[name] !== expected[name])
        toolbox.step(wrong.length === 0, "names and all six identifiers", wrong.length === 0
                     ? "as they were put in" : "wrong: " + wrong.join(", "))
        const serial = toolbox.run("openssl", ["x509", "-in", "rsa.crt", "-noout", "-serial"])
                       .output.trim().replace("serial=", "")
        toolbox.step(row.certificate.serialNumber === signedColons(serial),
                     "serial number as openssl has it", row.certificate.serialNumber + " / " + serial)
        const end = new Date(toolbox.run("openssl", ["x509", "-in", "rsa.crt", "-noout", "-enddate",
                                                     "-dateopt", "iso_8601"]).output.trim()
                             .replace("notAfter=", "").replace(" ", "T"))
        toolbox.step(end.getTime() === row.certificate.notValidAfter.getTime(),
                     "end of validity as openssl has it", end.toISOString())
    }

    // The module's form of a number: bytes of 0x80 and above as a minus sign and their distance from
    // 0x100, a colon after each group unless the text is just as long as plain groups would make it.
    function signedColons(hex) {
        const bytes = (parseInt(hex[0], 16) > 7 ? "00" + hex : hex).match(/../g)
        let text = ""
        for (const pair of bytes) {
            const value = parseInt(pair, 16)
            text += value < 0x80 ? pair : "-" + (0x100 - value).toString(16)
            if (text.length !== 3 * bytes.length - 1)
                text += ":"
        }
        return text.toUpperCase()
    }

    function* comeAndGo() {
        const before = stores.rows(3).length
        let began = Date.now()
        const taken = toolbox.removeModule()
        const gone = yield {until: () => stores.count(3) === 0, within: 10000}
        toolbox.step(taken && gone, "the token's module file is removed",
                     "%1 rows, then %2 after %3 ms".arg(before).arg(stores.count(3))
                     .arg(Date.now() - began))
        began = Date.now()
        const put = toolbox.restoreModule()
        const back = yield {until: () => stores.count(3) === before, within: 10000}
        toolbox.step(put && back, "the module file is back", "%1 rows after %2 ms"
                     .arg(stores.count(3)).arg(Date.now() - began))
    }
}
