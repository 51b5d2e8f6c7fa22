// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.15
import Trivex.Crypto 1.0

// A list of the certificates with keys, searched, and the details of one; import and removal.
Item {
    id: page

    function rowOf(name) {
        for (let i = 0; i < rows.count; ++i) {
            if (rows.itemAt(i).rowName === name)
                return rows.itemAt(i);
        }
        return null;
    }

    CertificateModel {
        id: keys
        sourceModel: KeyStoreModel
        filterRole: KeyStoreModel.SmartCard
        searchRoles: ["name", "issuer"]
    }

    Repeater {
        id: rows
        model: keys
        Item {
            readonly property string rowName: name
            readonly property string rowIssuer: issuer
            readonly property string rowId: entryId
            readonly property Certificate rowCertificate: certificate
            readonly property KeyStoreEntry rowEntry: keyStoreEntry
        }
    }

    CertificateInfoModel {
        id: details
    }

    Repeater {
        id: lines
        model: details
        Item {
            readonly property string value: model.value
        }
    }

    Repeater {
        id: locations
        model: KeyStoreModel.certLocation
        Item {
            readonly property string store: type
            readonly property int location: model.id
        }
    }

    SignalSpy {
        id: written
        target: KeyStoreModel
        signalName: "entryWrittenChanged"
    }

    SignalSpy {
        id: removed
        target: KeyStoreModel
        signalName: "entryRemovedChanged"
    }

    TestCase {
        name: "KeyStores"

        function test_1_list() {
            tryVerify(function() { return page.rowOf("Ivanov") && page.rowOf("Petrova"); }, 15000);
            const row = page.rowOf("Ivanov");
            compare(row.rowIssuer, "Test Root");
            compare(row.rowCertificate.commonName, "Ivanov");
            compare(row.rowEntry.certificate.commonName, "Ivanov");
            compare(row.rowCertificate.isRoot, false);
            compare(row.rowCertificate.publicKeyTypeAlgorithm, "RSA");
        }

        function test_2_search() {
            keys.pattern = "petr";
            compare(rows.count, 1);
            compare(rows.itemAt(0).rowName, "Petrova");
            keys.pattern = "nobody of that name";
            compare(rows.count, 0);
            keys.pattern = "";
            verify(rows.count >= 2);
        }

        function test_3_details() {
            details.certificate = page.rowOf("Ivanov").rowCertificate;
            compare(lines.count, 25);
            let values = [];
            for (let i = 0; i < lines.count; ++i)
                values.push(lines.itemAt(i).value);
            verify(values.indexOf("Ivanov") >= 0);
        }

        function test_4_export() {
            const certificate = page.rowOf("Ivanov").rowCertificate;
            verify(certificate.exportToFile(backstage.directory));
            verify(backstage.exists(backstage.directory + "/Ivanov.crt"));
        }

        function test_5_importBundle() {
            const bundle = backstage.makeBundle("Sidorov", "secret");
            verify(!KeyStoreModel.keyBundleFromFile(bundle, "wrong"));
            verify(KeyStoreModel.keyBundleFromFile(bundle, "secret"));
            let place = -1;
            for (let i = 0; i < locations.count; ++i) {
                if (locations.itemAt(i).store === backstage.tokenName)
                    place = i;
            }
            verify(place >= 0);
            compare(locations.itemAt(place).location, KeyStoreModel.SoftHSM);
            KeyStoreModel.setCertLocationId(place);
            KeyStoreModel.importKeyBundle();
            // Nobody answers the token's question here, so nothing is written.
            tryCompare(written, "count", 1, 15000);
            compare(written.signalArguments[0][0], true);
            compare(page.rowOf("Sidorov"), null);
        }

        function test_6_removal() {
            KeyStoreModel.removeCertificate(page.rowOf("Petrova").rowId);
            tryCompare(removed, "count", 1, 15000);
            // Removing needs the PIN too.
            compare(removed.signalArguments[0][0], false);
            verify(page.rowOf("Petrova"));
        }
    }
}
