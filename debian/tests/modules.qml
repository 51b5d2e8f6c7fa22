// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQml 2.15
import QtQuick 2.15
import Trivex.Crypto 1.0
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

// Waits for the RSA key of the token, signs a file that lies beside this page, and checks it.
Item {
    id: page
    readonly property string folder: Files.path(Qt.resolvedUrl("."))
    property bool started: false

    function end(result) {
        console.log("RESULT", result);
        Qt.quit();
    }

    LoaderFile {
        id: file
        filePath: page.folder + "contract.txt"
    }
    SignVerify {
        id: signer
        onGetPin: pinAccepted("87124653")
        onSignSuccess: verify(file.rawData, page.folder + "contract.sig", keys.entry)
        onVerifySuccess: page.end("good")
        onErrorChanged: if (error !== SignVerify.NoError) page.end("error " + error)
    }
    Instantiator {
        id: keys
        property KeyStoreEntry entry
        model: CertificateModel {
            sourceModel: KeyStoreModel
            filterRole: KeyStoreModel.SmartCard
        }
        QtObject {
            Component.onCompleted: {
                if (page.started || model.certificate.publicKeyTypeAlgorithm !== "RSA")
                    return;
                page.started = true;
                keys.entry = model.keyStoreEntry;
                Qt.callLater(signer.sign, file.rawData, page.folder + "contract.sig", keys.entry);
            }
        }
    }
    // A control and a text of the catalogues.
    Badge {
        visible: false
        Component.onCompleted: if (qsTrId("trivex-app-cancel") !== "Cancel") page.end("no texts")
    }
    Timer {
        interval: 60000
        running: true
        onTriggered: page.end("nothing came")
    }
}
