// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.15
import Trivex.Crypto 1.0

// What can be created and what can't, and the enumerations.
TestCase {
    name: "Types"

    function source(type) {
        return "import Trivex.Crypto 1.0; " + type + " {}";
    }

    function test_creatable_data() {
        return ["SignVerify", "LoaderFile", "KeyStoreEntry", "CertificateModel",
                "CertificateInfoModel", "CertificateRequest", "CertificateRequestModel"]
            .map(function(type) { return { tag: type }; });
    }

    function test_creatable(data) {
        const object = Qt.createQmlObject(source(data.tag), this);
        verify(object);
        object.destroy();
    }

    function test_uncreatable_data() {
        return ["Certificate", "SecureMessage", "SecureMessageKey", "SecureMessageSignature"]
            .map(function(type) { return { tag: type }; });
    }

    function test_uncreatable(data) {
        let message = "";
        try {
            Qt.createQmlObject(source(data.tag), this);
        } catch (error) {
            message = error.qmlErrors[0].message;
        }
        compare(message, "Not create " + data.tag);
    }

    function test_singleton() {
        verify(KeyStoreModel);
        compare(KeyStoreModel.error, KeyStoreModel.ErrorUnknown);
    }

    function test_enumerations() {
        compare(Certificate.CommonName, 0);
        compare(Certificate.IdentificationKind, 20);
        compare(Certificate.ErrorValidityUnknown, 64);
        compare(SecureMessage.ErrorFileNotLoaded, 257);
        compare(SecureMessageKey.X509, 2);
        compare(SecureMessageSignature.NoKey, 3);
        compare(KeyStoreModel.RootImported, 7);
        compare(KeyStoreModel.SoftHSM, 2);
        compare(CertificateRequest.EC384, 384);
        compare(SignVerify.ErrorSign, 3);
        compare(LoaderFile.Loading, 2);
    }

    function test_emptyEntry() {
        const entry = Qt.createQmlObject(source("KeyStoreEntry"), this);
        compare(entry.name, "");
        compare(entry.certificate, null);
        entry.destroy();
    }
}
