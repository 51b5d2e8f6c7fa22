// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// Whether a certificate is to be trusted, and why: the verdict in a word and a sentence, then each
/// certificate up to the root. The date that it is checked for can be typed, and what it has to be good
/// for can be chosen. Hidden while there is
/// nothing to say.
Card {
    id: view
    /// The check whose result is shown; not owned.
    property CertificateChain chain
    /// Whether the certificates of the path can be asked for.
    property bool canShow: true
    /// The one of that row of the path's `stepItems` is to be shown in full.
    signal showAsked(int row)
    /// There is a result.
    readonly property bool ready: chain !== null && chain.ready
    /// The check is under way.
    readonly property bool running: chain !== null && chain.running
    /// Checks for today, as the empty field says: the chain may keep a date from an earlier view.
    function startOver() {
        day.text = ""
        day.flag = ""
        use.currentIndex = 0
        if (chain) {
            chain.setDateText("")
            chain.purpose = CertificateChain.AnyPurpose
        }
    }
    Component.onCompleted: startOver()
    /// The colours of the validity that is as good.
    function stateOf(verdict) {
        return [Validity.Valid, Validity.Expiring, Validity.Unknown, Validity.Expired][verdict]
    }

    objectName: "chainView"
    title: qsTrId("trivex-app-chain-title")
    visible: ready || running

    Flow {
        spacing: Theme.unit
        Layout.fillWidth: true
        Badge {
            objectName: "chainBadge"
            text: view.ready ? view.chain.word : qsTrId("trivex-app-chain-running")
            validity: view.ready ? view.stateOf(view.chain.verdict) : Validity.Unknown
        }
    }
    Label {
        objectName: "chainMessage"
        textFormat: Text.PlainText
        text: view.ready ? view.chain.message : ""
        visible: text.length > 0
        wrapMode: Text.WrapAtWordBoundaryOrAnywhere
        Layout.fillWidth: true
    }
    Label {
        objectName: "chainAdvice"
        textFormat: Text.PlainText
        text: view.ready ? view.chain.advice || view.chain.note : ""
        visible: text.length > 0
        color: Theme.textDim
        wrapMode: Text.WrapAtWordBoundaryOrAnywhere
        Layout.fillWidth: true
    }
    FillColumn {
        spacing: 0
        Layout.fillWidth: true
        Accessible.role: Accessible.List
        Accessible.name: qsTrId("trivex-app-chain-steps")
        Repeater {
            id: steps
            model: view.chain ? view.chain.steps : null
            // A path that became shorter leaves the keys at its end.
            onItemRemoved: {
                if (item.activeFocus && index > 0)
                    steps.itemAt(index - 1).forceActiveFocus(Qt.OtherFocusReason)
            }
            ChainStepRow {
                objectName: "chainStep" + index
                name: model.name
                place: model.place
                word: model.word
                finding: model.text
                trusted: model.root
                verdict: model.verdict
                shade: view.stateOf(model.verdict)
                depth: index
                enabled: view.canShow
                onClicked: view.showAsked(index)
                Layout.fillWidth: true
            }
        }
    }
    FillColumn {
        spacing: 3
        Layout.fillWidth: true
        Label {
            textFormat: Text.PlainText
            text: qsTrId("trivex-app-chain-purpose-label")
            color: Theme.textDim
            font.pixelSize: Theme.smallSize
            wrapMode: Text.WordWrap
            Layout.fillWidth: true
            Accessible.ignored: true
        }
        ComboBox {
            id: use
            objectName: "chainPurpose"
            readonly property var purposes: [
                CertificateChain.AnyPurpose, CertificateChain.TlsServer, CertificateChain.TlsClient,
                CertificateChain.EmailProtection, CertificateChain.CodeSigning]
            model: [qsTrId("trivex-app-chain-purpose-any"), qsTrId("trivex-app-chain-purpose-server"),
                    qsTrId("trivex-app-chain-purpose-client"), qsTrId("trivex-app-chain-purpose-mail"),
                    qsTrId("trivex-app-chain-purpose-code")]
            Accessible.name: qsTrId("trivex-app-chain-purpose-label") + ": " + currentText
            Layout.fillWidth: true
            Layout.maximumWidth: Theme.fontSize * 22
            onActivated: if (view.chain) view.chain.purpose = purposes[index]
        }
    }
    LabeledField {
        id: day
        objectName: "chainDay"
        label: qsTrId("trivex-app-chain-date")
        field.objectName: "chainDate"
        field.placeholderText: qsTrId("trivex-app-chain-today")
        Layout.fillWidth: true
        Layout.maximumWidth: Theme.fontSize * 14
        field.onTextEdited: flag = ""
        field.onEditingFinished: {
            const taken = !view.chain || view.chain.setDateText(text)
            flag = taken ? "" : qsTrId("trivex-app-chain-wrong-date").arg(Validity.date(new Date()))
        }
    }
}
