// SPDX-FileCopyrightText: 2026 The Trivex developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Trivex.Crypto.Controls 1.0
import Trivex.Crypto.Tools 1.0

/// A key on a token and a request for it, in three steps on one page.
FormPage {
    id: page
    property int columns: 3
    readonly property bool signing: request.running && keyCard.made
    property bool explained: false
    /// The name of a key that was there before, and gets a request.
    property string existingKey
    /// A key that is being made, or has no request yet: the page is to stay.
    readonly property bool unfinished: request.running || request.hasKey && !savedPath
    readonly property bool busy: request.running
    readonly property bool filled: unfinished && !busy && request.named
    property string savedPath
    signal menuAsked()
    signal failed(string cause, string advice)
    signal startOverAsked()
    signal told(string text)

    maximumWidth: Theme.fontSize * 52
    Accessible.name: qsTrId("trivex-app-new-request")

    /// The token's operation ended without a key or a request; why, the window says.
    function generationEnded() {
        explained = true
    }
    function stop() { request.cancel() }
    function focusFirst() {
        if (savedPath)
            savedCard.focusFirst()
        else if (keyCard.made)
            form.focusFirst()
        else
            keyCard.focusFirst()
    }
    function useKey(storeId, keyId, name) {
        existingKey = name
        request.takeKey(storeId, keyId)
    }
    function create() {
        if (request.running || !form.check())
            return
        explained = false
        request.signAgain()
    }
    function tell(error) {
        if (!keyCard.made)
            existingKey = ""
        // Of what is no matter of the token nobody else has told.
        if (explained && error !== KeyRequest.WrongContents && error !== KeyRequest.NotSaved)
            return
        if (error === KeyRequest.NoKey)
            failed(qsTrId("trivex-app-request-no-key"), qsTrId("trivex-app-request-no-key-advice"))
        else if (error === KeyRequest.KeyNotMade)
            failed(qsTrId("trivex-app-generate-failed"), qsTrId("trivex-app-advice-pin"))
        else
            failed(qsTrId("trivex-app-request-not-made"), error === KeyRequest.WrongContents
                   ? request.message : Files.whyNotWritten(request.folder()))
    }

    KeyRequest {
        id: request
        onFinished: {
            if (error !== KeyRequest.NoError) {
                // What the window knows of the token comes first.
                Qt.callLater(page.tell, error)
            } else if (!keyCard.made) {
                keyCard.made = true
                form.focusFirst()
            } else {
                page.savedPath = path
                page.reveal(savedCard)
                savedCard.focusFirst()
            }
        }
    }
    PageHeader {
        title: qsTrId("trivex-app-new-request")
        menuVisible: page.columns < 3
        onMenuAsked: page.menuAsked()
        Layout.fillWidth: true
    }
    ProfileCard {
        request: request
        enabled: !page.savedPath && !request.running
        onFailed: page.failed(cause, advice)
        Layout.fillWidth: true
    }
    Notice {
        objectName: "existingKeyNotice"
        text: page.existingKey
            ? Texts.put(qsTrId("trivex-app-request-for-key"), [page.existingKey]) : ""
        Layout.fillWidth: true
    }
    NewKeyCard {
        id: keyCard
        visible: !page.existingKey
        request: request
        narrow: page.width < Theme.fontSize * 36
        onStarted: page.explained = false
        Layout.fillWidth: true
    }
    RequestCard {
        id: form
        request: request
        signing: page.signing
        startable: keyCard.made && !page.savedPath && !page.signing
        leavable: keyCard.made && !page.savedPath
        opacity: keyCard.made ? 1 : 0.6
        onCreateAsked: page.create()
        onLeaveAsked: page.startOverAsked()
        onStopAsked: request.cancel()
        Layout.fillWidth: true
    }
    SavedRequestCard {
        id: savedCard
        path: page.savedPath
        pem: request.pem
        Layout.fillWidth: true
        onStartOverAsked: page.startOverAsked()
        onFailed: page.failed(cause, advice)
        onTold: page.told(text)
    }
}
