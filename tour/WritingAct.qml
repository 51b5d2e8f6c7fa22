// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto 1.0

// Writing: keys, requests, issued certificates, a bundle file, removal.
Item {
    id: act

    property Stores stores
    property int pairs: 0
    property int saved: 0

    function* play() {
        toolbox.heading("Writing: keys, requests, import, export, removal")
        const before = objects()
        const rows = stores.rows(3).map(row => row.id)
        requests.keyStoreModel = KeyStoreModel
        requests.init()
        yield* request(rsaRequest, 2048, "tour-rsa", "Запрос РСА")
        yield* request(ecRequest, 384, "tour-ec", "Запрос ЭК")
        yield* issue("Запрос РСА", "tour-rsa")
        yield* issue("Запрос ЭК", "tour-ec")
        yield* importBundle()
        exportCertificate("Запрос РСА")
        yield* removeNew(rows)
        const after = objects()
        toolbox.step(before !== "" && before === after, "the token is as before (pkcs11-tool)",
                     "%1 objects".arg(after.split("\n").length))
    }

    // The token's objects as another program sees them, in an order of their own.
    function objects() {
        const lines = toolbox.pkcs11(["--list-objects"]).output.split("\n")
        const seen = []
        for (const line of lines) {
            if (line.indexOf(" Object;") >= 0)
                seen.push(line.trim())
            else if (/^ +(label|ID):/.test(line) && seen.length > 0)
                seen[seen.length - 1] += " " + line.trim()
        }
        return seen.sort().join("\n")
    }

    function* request(request, algorithm, key, name) {
        request.keyStoreModel = KeyStoreModel
        request.init()
        request.prKeyAlgorithmId = algorithm
        request.prKeyLocationIndex = stores.locations().indexOf(toolbox.token)
        request.keyIdentifier = key
        request.prKeyPin = toolbox.pin
        const began = Date.now()
        const had = pairs
        request.createKeyPair()
        const made = yield {until: () => pairs > had, within: 60000}
        const listed = objects()
        const both = (listed.match(new RegExp("(Public|Private) Key Object.* " + key + "( |$)", "gm"))
                      || []).length
        toolbox.step(made && both === 2, "a key pair %1 is made on the token".arg(algorithm),
                     "%1 ms, pkcs11-tool lists %2 keys \"%3\"".arg(Date.now() - began)
                     .arg(both).arg(key))
        request.setCommonName(name)
        request.setOrganization("ООО «Ромашка»")
        request.setLocality("Москва")
        request.setEmail("request@romashka.example")
        const savedBefore = saved
        request.createRequest()
        const file = request.requestPath() + name + ".csr"
        const check = toolbox.run("openssl", ["req", "-in", file, "-noout", "-verify", "-subject",
                                              "-nameopt", "utf8"])
        toolbox.step(saved === savedBefore + 1 && check.code === 0
                     && check.output.indexOf(name) >= 0, "its request is signed (openssl req -verify)",
                     (check.output + check.error).trim().replace("\n", ", "))
        const listedRequest = yield {until: () => requestNames().indexOf(name) >= 0, within: 5000}
        toolbox.step(listedRequest, "the request is listed", requestNames().join(", "))
    }

    function requestNames() {
        const names = []
        for (let i = 0; i < requests.rowCount(); ++i)
            names.push(toolbox.value(requests, i, "name"))
        return names
    }

    function* issue(name, key) {
        const csr = rsaRequest.requestPath() + name + ".csr"
        const crt = toolbox.path(key + ".crt")
        const issued = toolbox.run("openssl", ["x509", "-req", "-in", csr, "-CA", "ca.crt", "-CAkey",
                                               "ca.key", "-CAcreateserial", "-days", "30", "-out", crt])
        const loaded = KeyStoreModel.certificateFromPEMFile(crt)
        KeyStoreModel.setCertLocationId(stores.locations().indexOf(toolbox.token))
        const had = stores.written
        KeyStoreModel.importCertificate()
        const arrived = yield {
            until: () => stores.written > had && stores.find(3, name) !== undefined, within: 20000
        }
        const row = stores.find(3, name)
        toolbox.step(issued.code === 0 && loaded && arrived, "the issued certificate is imported",
                     arrived ? row.name + ", " + row.certificate.privateKeyAvailability
                             : issued.error + " failed writes: " + stores.notWritten)
        const gone = yield {until: () => requestNames().indexOf(name) < 0, within: 10000}
        toolbox.step(gone && !toolbox.exists(csr), "the saved request vanishes",
                     "left: " + (requestNames().join(", ") || "none"))
    }

    function* importBundle() {
        const file = toolbox.path("bundle.p12")
        const wrong = KeyStoreModel.keyBundleFromFile(file, "не тот")
        toolbox.step(!wrong && KeyStoreModel.error === KeyStoreModel.ErrorPassphrase,
                     "a bundle with a wrong password is refused", "error " + KeyStoreModel.error)
        const right = KeyStoreModel.keyBundleFromFile(file, "пароль")
        const had = stores.written
        KeyStoreModel.importKeyBundle()
        const arrived = yield {
            until: () => stores.written > had && stores.find(3, "Анна Бандл") !== undefined,
            within: 20000
        }
        const key = toolbox.run("openssl", ["rsa", "-in", "bundle.key", "-noout", "-modulus"]).output
        toolbox.step(right && arrived && key !== "", "the bundle is imported with its key",
                     arrived ? stores.find(3, "Анна Бандл").certificate.privateKeyAvailability
                             : "failed writes: " + stores.notWritten)
        const now = objects()
        toolbox.step(/Private Key Object/.test(now), "pkcs11-tool sees its objects",
                     now.split("\n").length + " objects on the token")
    }

    function exportCertificate(name) {
        const row = stores.find(3, name)
        const done = row !== undefined && row.certificate.exportToFile(toolbox.path("."))
        const fingerprint = file => toolbox.run("openssl", ["x509", "-in", file, "-noout",
                                                            "-fingerprint", "-sha256"]).output.trim()
        const exported = fingerprint(toolbox.path(name + ".crt"))
        toolbox.step(done && exported !== "" && exported === fingerprint("tour-rsa.crt"),
                     "a certificate is exported (openssl x509)", exported)
    }

    function* removeNew(keep) {
        let failed = 0
        let count = 0
        for (;;) {
            const row = stores.rows(3).find(candidate => keep.indexOf(candidate.id) < 0)
            if (row === undefined || ++count > 20)
                break
            const id = row.id
            const had = stores.removed + stores.notRemoved
            const bad = stores.notRemoved
            KeyStoreModel.removeCertificate(id)
            const gone = yield {
                until: () => stores.removed + stores.notRemoved > had
                             && !stores.rows(3).some(candidate => candidate.id === id),
                within: 10000
            }
            if (!gone || stores.notRemoved > bad)
                ++failed
        }
        toolbox.step(failed === 0 && count >= 3, "everything new is removed again",
                     "%1 removed, %2 failed".arg(count).arg(failed))
    }

    CertificateRequest {
        id: rsaRequest
        onCreateKeyPairDone: ++act.pairs
        onRequestCreated: ++act.saved
    }
    CertificateRequest {
        id: ecRequest
        onCreateKeyPairDone: ++act.pairs
        onRequestCreated: ++act.saved
    }
    CertificateRequestModel { id: requests }
}
