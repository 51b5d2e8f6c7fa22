// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.15
import Trivex.Crypto 1.0

// From a key to a certificate: generate, ask, be issued, import, and see the request go.
Item {
    id: page

    function savedRequest(name) {
        for (let i = 0; i < saved.count; ++i) {
            if (saved.itemAt(i).rowName === name)
                return saved.itemAt(i).request;
        }
        return null;
    }

    CertificateRequest {
        id: draft
        keyStoreModel: KeyStoreModel
        keyIdentifier: "mail key"
        keyMarker: "for mail"
        prKeyPin: backstage.pin
    }

    Repeater {
        id: places
        model: draft.prKeyLocation
        Item {
            readonly property string store: type
        }
    }

    Repeater {
        id: saved
        model: CertificateRequestModel {
            id: requests
            keyStoreModel: KeyStoreModel
        }
        Item {
            readonly property string rowName: name
            readonly property int rowType: type
            readonly property CertificateRequest request: certificate
        }
    }

    SignalSpy {
        id: keyDone
        target: draft
        signalName: "createKeyPairDone"
    }

    SignalSpy {
        id: created
        target: draft
        signalName: "requestCreated"
    }

    SignalSpy {
        id: arrived
        target: KeyStoreModel
        signalName: "keyBundleWritten"
    }

    TestCase {
        name: "Requests"

        property int place: -1

        function tokenRow(model) {
            for (let i = 0; i < model.rowCount(); ++i) {
                if (backstage.value(model, i, "type") === backstage.tokenName)
                    return i;
            }
            return -1;
        }

        function initTestCase() {
            tryVerify(function() { return tokenRow(KeyStoreModel.certLocation) >= 0; }, 15000);
            place = tokenRow(KeyStoreModel.certLocation);
            draft.init();
            compare(draft.prKeyAlgorithm.rowCount(), 4);
        }

        function test_1_key() {
            compare(draft.prKeyLocationId(), 3);
            draft.prKeyLocationIndex = place;
            compare(draft.prKeyLocationId(), KeyStoreModel.SoftHSM);
            draft.prKeyAlgorithmId = CertificateRequest.RSA2048;
            draft.createKeyPair();
            keyDone.wait(30000);
            compare(draft.publicKeyTypeAlgorithm, "RSA");
            compare(draft.publicKeyId, "mail key");
            compare(draft.publicKeyMarker, "for mail");
        }

        function test_2_request() {
            draft.setCommonName("Иванов");
            draft.setOrganization("Company");
            draft.setCountryCode("RU");
            draft.setSnils("11223344595");
            draft.createRequest();
            compare(created.count, 1);
            compare(draft.fileName, "Иванов.csr");
            verify(backstage.requestSubject(backstage.requestDirectory + draft.fileName)
                   .indexOf("CN=Иванов") >= 0);
            tryVerify(function() { return page.savedRequest("Иванов"); });
            compare(saved.itemAt(0).rowType, KeyStoreModel.Request);
        }

        function test_3_edit() {
            const request = page.savedRequest("Иванов");
            compare(request.issuer, "Company");
            request.setCommonName("Петров");
            request.setEditMode(true);
            tryVerify(function() { return page.savedRequest("Петров"); });
            compare(backstage.filesIn(backstage.requestDirectory), ["Петров.csr"]);
            verify(backstage.requestSubject(backstage.requestDirectory + "Петров.csr")
                   .indexOf("CN=Петров") >= 0);
        }

        function test_4_export() {
            verify(page.savedRequest("Петров").exportToFile(backstage.directory));
            verify(backstage.exists(backstage.directory + "/Петров.csr"));
        }

        function test_5_remove() {
            page.savedRequest("Петров").setEditMode(false);
            tryCompare(saved, "count", 2);
            compare(backstage.filesIn(backstage.requestDirectory),
                    ["Петров (1).csr", "Петров.csr"]);
            requests.remove(0);
            requests.remove(17);
            tryCompare(saved, "count", 1);
            compare(backstage.filesIn(backstage.requestDirectory), ["Петров.csr"]);
        }

        function test_6_arrival() {
            const file = backstage.issue(backstage.requestDirectory + "Петров.csr");
            verify(KeyStoreModel.certificateFromPEMFile(file));
            KeyStoreModel.setCertLocationId(place);
            KeyStoreModel.importCertificate();
            arrived.wait(15000);
            tryCompare(saved, "count", 0);
            compare(backstage.filesIn(backstage.requestDirectory), []);
        }
    }
}
