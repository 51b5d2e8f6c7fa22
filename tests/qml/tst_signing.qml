// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.15
import Trivex.Crypto 1.0

// A file is loaded, signed with a key on a token, and the signature checked.
Item {
    id: page

    property KeyStoreEntry key: null
    property string typedPin: ""
    property int prompts: 0

    LoaderFile {
        id: document
    }

    SignVerify {
        id: signer
        // An application opens its PIN dialog here.
        onGetPin: {
            ++page.prompts;
            if (page.typedPin)
                signer.pinAccepted(page.typedPin);
            else
                signer.pinRejected();
        }
    }

    SignVerify {
        id: silent
    }

    Repeater {
        model: CertificateModel {
            sourceModel: KeyStoreModel
            filterRole: KeyStoreModel.SmartCard
        }
        Item {
            Component.onCompleted: if (name === "Ivanov") page.key = keyStoreEntry
        }
    }

    SignalSpy {
        id: signed
        target: signer
        signalName: "signSuccess"
    }

    SignalSpy {
        id: verified
        target: signer
        signalName: "verifySuccess"
    }

    TestCase {
        name: "SignVerify"

        readonly property string signature: backstage.directory + "/letter.sig"

        function initTestCase() {
            tryVerify(function() { return page.key; }, 15000);
            document.filePath = backstage.writeFile("letter.txt", "Dear reader");
            compare(document.status, LoaderFile.Ready);
        }

        function test_1_nobodyAsksForThePin() {
            silent.sign(document.rawData, signature, page.key);
            tryCompare(silent, "error", SignVerify.ErrorSign, 8000);
            verify(!backstage.exists(signature));
        }

        function test_2_rejected() {
            signer.sign(document.rawData, signature, page.key);
            tryCompare(signer, "error", SignVerify.ErrorSign, 8000);
            compare(page.prompts, 1);
            verify(!backstage.exists(signature));
            signer.setError(SignVerify.NoError);
        }

        function test_3_signed() {
            page.typedPin = backstage.pin;
            signer.sign(document.rawData, signature, page.key);
            signed.wait(10000);
            compare(page.prompts, 2);
            compare(backstage.fileSize(signature), 256);
        }

        function test_4_verified() {
            signer.verify(document.rawData, signature, page.key);
            verified.wait(5000);
            compare(signer.error, SignVerify.NoError);
            compare(signer.ceritficate.commonName, "Ivanov");
        }

        function test_5_changedFile() {
            document.filePath = backstage.writeFile("changed.txt", "Dear Reader");
            signer.verify(document.rawData, signature, page.key);
            tryCompare(signer, "error", SignVerify.ErrorVerify, 5000);
        }

        function test_6_missingSignature() {
            signer.verify(document.rawData, signature + ".missing", page.key);
            tryCompare(signer, "error", SignVerify.ErrorNotFoundCmsFile, 5000);
        }

        function test_7_noKey() {
            signer.sign(document.rawData, signature, null);
            tryCompare(signer, "error", SignVerify.ErrorSign, 8000);
        }
    }
}
