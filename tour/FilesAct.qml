// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import Trivex.Crypto 1.0

// Finding, reading, signing and checking.
Item {
    id: act

    property Stores stores
    property int signed: 0
    property int verified: 0

    function* play() {
        toolbox.heading("Files: search, details, signing, verifying")
        search()
        details()
        loadFiles()
        yield* signAndVerify()
    }

    function found(pattern) {
        personal.pattern = pattern
        const names = []
        for (let i = 0; i < personal.rowCount(); ++i)
            names.push(toolbox.value(personal, i, "name"))
        return names
    }

    function search() {
        const all = found("").length
        for (const pattern of ["иванова", "770708", "ИВАНОВА МАР", "("]) {
            const names = found(pattern)
            const good = pattern === "(" ? names.length === 0 : names.length === 1
            toolbox.step(good, "search for \"%1\"".arg(pattern),
                         "%1 of %2: %3".arg(names.length).arg(all).arg(names.join(", ")))
        }
        found("")
    }

    function details() {
        const row = stores.find(3, "Иванова Мария Петровна")
        info.certificate = row ? row.certificate : null
        const rows = []
        for (let i = 0; i < info.rowCount(); ++i)
            rows.push(toolbox.value(info, i, "label") + ": " + toolbox.value(info, i, "value"))
        toolbox.step(rows.length === 25 && rows.every(text => text.indexOf("trivex-") < 0),
                     "the rows of one certificate", rows.length + " rows: " + rows.join(" | "))
    }

    function loadFiles() {
        const cases = [["document.pdf", "application/pdf"], ["picture.png", "image/png"],
                       ["contract.txt", "text/plain"]]
        for (const [name, type] of cases) {
            loader.filePath = toolbox.path(name)
            const digest = toolbox.run("openssl", ["dgst", "-sha256", "-r", name]).output.split(" ")[0]
            toolbox.step(loader.status === 1 && loader.mimeType === type
                         && loader.fileHash === digest, name + " is loaded",
                         "%1, %2 bytes, sha256 %3".arg(loader.mimeType).arg(loader.fileSize)
                         .arg(loader.fileHash))
        }
        loader.filePath = toolbox.path("drawing.svg")
        toolbox.step(loader.status === 3 && loader.error === 3, "drawing.svg is refused",
                     "%1, status %2, error %3".arg(loader.mimeType).arg(loader.status)
                     .arg(loader.error))
    }

    // The token is pulled and put back first, so that nobody is logged in and the PIN is asked.
    function* signAndVerify() {
        const name = "Иванова Мария Петровна"
        toolbox.removeModule()
        yield {until: () => stores.count(3) === 0, within: 10000}
        toolbox.restoreModule()
        yield {until: () => stores.find(3, name) !== undefined, within: 10000}
        loader.filePath = toolbox.path("contract.txt")
        const row = stores.find(3, name)
        const asked = stores.pinsAsked
        const signature = toolbox.path("contract.sig")
        stores.signer.sign(loader.rawData, signature, row ? row.entry : null)
        const done = yield {until: () => signed > 0 || stores.signer.error !== 0, within: 30000}
        toolbox.step(done && signed === 1 && toolbox.size(signature) === 256,
                     "contract.txt is signed on the token", "%1 bytes, PIN asked %2 time(s), error %3"
                     .arg(toolbox.size(signature)).arg(stores.pinsAsked - asked)
                     .arg(stores.signer.error))
        toolbox.step(stores.pinsAsked === asked + 1, "the PIN was asked once", "%1"
                     .arg(stores.pinsAsked - asked))
        toolbox.run("openssl", ["x509", "-in", "rsa.crt", "-noout", "-pubkey", "-out", "rsa.pub"])
        toolbox.writeText(toolbox.path("contract.hex"), loader.fileHash)
        const check = toolbox.run("openssl", ["pkeyutl", "-verify", "-pubin", "-inkey", "rsa.pub",
                                              "-sigfile", "contract.sig", "-in", "contract.hex",
                                              "-pkeyopt", "rsa_padding_mode:pkcs1"])
        toolbox.step(check.code === 0, "openssl pkeyutl -verify", (check.output + check.error).trim())
        yield* verify(signature, row, true, "the signature is verified")
        toolbox.flipBit(signature)
        yield* verify(signature, row, false, "one flipped bit is refused")
    }

    function* verify(signature, row, good, name) {
        const had = verified
        stores.signer.setError(0)
        stores.signer.verify(loader.rawData, signature, row ? row.entry : null)
        yield {until: () => verified > had || stores.signer.error !== 0, within: 10000}
        const right = good ? verified === had + 1 && stores.signer.ceritficate.commonName === row.name
                           : verified === had && stores.signer.error === 4
        toolbox.step(right, name, good ? "signed by " + stores.signer.ceritficate.commonName
                                       : "error " + stores.signer.error)
    }

    Connections {
        target: stores.signer
        function onSignSuccess() { ++act.signed }
        function onVerifySuccess() { ++act.verified }
    }
    CertificateModel {
        id: personal
        sourceModel: KeyStoreModel
        filterRole: KeyStoreModel.SmartCard
        searchRoles: ["name", "issuer"]
    }
    CertificateInfoModel { id: info }
    LoaderFile { id: loader }
}
