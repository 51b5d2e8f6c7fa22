// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Which kind of signature is made, or checked.
FillColumn {
    id: chooser
    enum Form {
        Detached,
        Attached,
        Raw
    }
    property int form: SignatureForm.Detached
    readonly property bool raw: form === SignatureForm.Raw
    /// As `DocumentSigner` calls it. A function: whoever hears of a new form needs it at once.
    function messageForm() {
        return form === SignatureForm.Attached ? DocumentSigner.Attached : DocumentSigner.Detached
    }
    spacing: Theme.unit / 2

    Label {
        textFormat: Text.PlainText
        text: qsTrId("trivex-app-signature-form")
        color: Theme.textDim
        font.pixelSize: Theme.smallSize
        Layout.fillWidth: true
    }
    ComboBox {
        objectName: "signatureForm"
        model: [qsTrId("trivex-app-form-detached"), qsTrId("trivex-app-form-attached"),
                qsTrId("trivex-app-form-raw")]
        currentIndex: chooser.form
        Accessible.name: qsTrId("trivex-app-signature-form") + ": " + currentText
        Layout.fillWidth: true
        onActivated: chooser.form = index
    }
}
