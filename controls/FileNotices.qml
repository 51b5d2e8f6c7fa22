// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// What there is to know of a file before one looks at what it holds: that it is none for an
/// import, wants a password, or has damaged parts.
FillColumn {
    id: notices
    /// The file that the notices are about; not owned.
    property CertificateFile file: CertificateFile {}
    /// No password has been typed yet.
    property bool waits: true
    visible: (problem.text + broken.text + unread.text).length > 0
    spacing: Theme.unit * 1.5

    Notice {
        id: problem
        objectName: "importProblem"
        readonly property bool firstTry: notices.file.kind === CertificateFile.BundleKind
            && notices.waits && !notices.file.unlocking
        /// What to know of files that hold no certificate.
        readonly property var kinds: ({
            [CertificateFile.RequestKind]: qsTrId("trivex-app-kind-request"),
            [CertificateFile.PrivateKeyKind]: qsTrId("trivex-app-kind-key"),
            [CertificateFile.PublicKeyKind]: qsTrId("trivex-app-kind-public-key"),
            [CertificateFile.RevocationListKind]: qsTrId("trivex-app-kind-list"),
            [CertificateFile.MessageKind]: qsTrId("trivex-app-kind-message"),
            [CertificateFile.SignatureKind]: qsTrId("trivex-app-kind-signature"),
            [CertificateFile.EncryptedMessageKind]: qsTrId("trivex-app-kind-encrypted"),
            [CertificateFile.AttributeCertificateKind]: qsTrId("trivex-app-kind-foreign"),
            [CertificateFile.RevocationAnswerKind]: qsTrId("trivex-app-kind-foreign"),
            [CertificateFile.OtherKind]: qsTrId("trivex-app-kind-other")
        })
        level: firstTry || notices.file.kind === CertificateFile.RevocationListKind ? 0 : 3
        text: notices.file.unlocked ? ""
            : firstTry && notices.file.problem ? qsTrId("trivex-app-bundle-ask")
            : notices.file.problem ? notices.file.problem
            : kinds[notices.file.kind] || ""
        Layout.fillWidth: true
    }
    Notice {
        id: broken
        objectName: "importBroken"
        level: 2
        text: notices.file.broken > 0 && notices.file.items.count > 0
            ? qsTrId("trivex-app-kind-broken", notices.file.broken) : ""
        Layout.fillWidth: true
    }
    Notice {
        id: unread
        objectName: "importUnreadKeys"
        level: 2
        text: notices.file.unreadKeys > 0
            ? qsTrId("trivex-app-kind-unread-keys", notices.file.unreadKeys) : ""
        Layout.fillWidth: true
    }
}
